#pragma once

#include <functional>
#include <memory>
#include <pybind11/pybind11.h>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "modele/liaisons.h"
#include "modele/poignees.h"
#include "modele/vie.h"

// The way back: what the library calls and Python wrote.
namespace zuma::python::modele {

/// Keeps the exception for the caller in Python and gives the failure that the library sees.
[[nodiscard]] Echec Retient(pybind11::error_already_set&& exception);

/// What becomes of an `Echec` that Python raises.
enum class EchecDeRappel {
  DuModèle,    ///< a failure like the library's own
  DeLAppelant  ///< an exception like others: kept for the caller
};

/// Runs Python inside a call of the library. What it raises is kept for the caller of that call,
/// and thrown as a failure.
template <class Travail>
auto EnPython(EchecDeRappel échecs, Travail&& travail) -> decltype(travail()) {
  const pybind11::gil_scoped_acquire verrou;
  try {
    return travail();
  } catch (pybind11::error_already_set& exception) {
    if (échecs == EchecDeRappel::DuModèle && EstUnEchec(exception)) {
      throw EchecDePython(exception);
    }
    throw Retient(std::move(exception));
  } catch (const pybind11::builtin_exception& exception) {  // a result of another type
    exception.set_error();
    throw Retient(pybind11::error_already_set());
  }
}

/// The same where the library expects no failure: what Python raised is kept, and `défaut` given.
template <class Travail>
auto EnPythonSansEchec(Travail&& travail, decltype(travail()) défaut) noexcept
    -> decltype(travail()) {
  try {
    return EnPython(EchecDeRappel::DeLAppelant, travail);
  } catch (const std::exception&) {
    return défaut;
  }
}
template <class Travail>
void EnPythonSansEchec(Travail&& travail) noexcept {
  try {
    EnPython(EchecDeRappel::DeLAppelant, travail);
  } catch (const std::exception&) {  // kept
    return;
  }
}

/// A handler that Python wrote.
template <class... A>
[[nodiscard]] std::function<void(A...)> Rappel(pybind11::function fonction) {
  return [f = Retenu(std::move(fonction))](A... arguments) {
    EnPython(EchecDeRappel::DeLAppelant, [&] { (*f)(arguments...); });
  };
}

/// A handler that is registered: ends it by whatever way Python likes.
class Abonnement {
 public:
  explicit Abonnement(std::function<void()> fin) : fin_(std::move(fin)) {}
  /// Once; nothing from then on.
  void Désabonne() {
    if (fin_) std::exchange(fin_, nullptr)();
  }
  [[nodiscard]] bool Abonné() const noexcept { return static_cast<bool>(fin_); }

 private:
  std::function<void()> fin_;
};

/// Registers a handler of an event of the object behind `soi`. The subscription may outlive the
/// frame.
template <class T, class A, class D, class F>
[[nodiscard]] Abonnement AbonneÀ(PoignéeDe<T>& soi, const char* source, A abonne, D désabonne,
                                 F rappel) {
  const int numéro = Appelle(soi.LaLaisse(), source, Genre::Bref,
                             [&] { return (soi.Objet().*abonne)(std::move(rappel)); });
  const Ref<T> objet = soi.Partagé();
  return Abonnement(
      [laisse = soi.LaLaisse(), suivi = std::weak_ptr<T>(objet.Partagé()), numéro, désabonne] {
        const std::shared_ptr<T> là = suivi.lock();
        if (là && laisse->Ouverte()) ((*là).*désabonne)(numéro);
      });
}

/// Method `nom` of the Python half of `objet`; a class that does not write it fails with 438.
template <class Interface>
[[nodiscard]] pybind11::function MéthodeÉcrite(const Interface* objet, const char* nom) {
  pybind11::function f = pybind11::get_override(objet, nom);
  if (!f) throw Echec(Numéro::OpérationAbsente);
  return f;
}

/// Calls method `nom` that Python wrote.
template <class R, class Interface, class... A>
R Demande(const Interface* objet, const char* nom, const A&... arguments) {
  return EnPython(EchecDeRappel::DuModèle, [&]() -> R {
    const pybind11::object résultat = MéthodeÉcrite(objet, nom)(arguments...);
    if constexpr (!std::is_void_v<R>) return résultat.template cast<R>();
  });
}
/// The same where nothing may fail.
template <class R, class Interface, class... A>
R DemandeSansEchec(const Interface* objet, const char* nom, R défaut,
                   const A&... arguments) noexcept {
  return EnPythonSansEchec(
      [&]() -> R { return MéthodeÉcrite(objet, nom)(arguments...).template cast<R>(); },
      std::move(défaut));
}
/// A method that Python may write, and that fails nothing.
template <class R, class Interface>
R DemandeSiEcrit(const Interface* objet, const char* nom, R défaut) noexcept {
  return EnPythonSansEchec(
      [&]() -> R {
        const pybind11::function f = pybind11::get_override(objet, nom);
        return f ? f().template cast<R>() : défaut;
      },
      défaut);
}
template <class Interface, class... A>
void DisSansEchec(const Interface* objet, const char* nom, const A&... arguments) noexcept {
  EnPythonSansEchec([&] { MéthodeÉcrite(objet, nom)(arguments...); });
}

///@{
/// A property that the Python half of `objet` gives, and takes.
template <class R, class Interface>
R Attribut(const Interface* objet, const char* nom) {
  return EnPython(EchecDeRappel::DuModèle, [&] {
    const pybind11::object python = pybind11::cast(objet, pybind11::return_value_policy::reference);
    return python.attr(nom).template cast<R>();
  });
}
template <class Interface, class V>
void PoseAttribut(const Interface* objet, const char* nom, const V& valeur) {
  EnPython(EchecDeRappel::DuModèle, [&] {
    pybind11::cast(objet, pybind11::return_value_policy::reference).attr(nom) = valeur;
  });
}
///@}

/// Base of the operations of an interface, for Python: a class of Python that lacks one has none.
template <class Interface>
Interface& ExigeLaBibliothèque(Interface& objet) {
  if (dynamic_cast<const EcritEnPython*>(&objet) != nullptr) throw Echec(Numéro::OpérationAbsente);
  return objet;
}

void LieLesAbonnements(pybind11::module_& module);

}  // namespace zuma::python::modele
