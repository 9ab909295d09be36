#pragma once

#include <functional>
#include <pybind11/functional.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <string>
#include <type_traits>
#include <utility>

#include "modele/conversions.h"
#include "modele/echecs.h"
#include "modele/enumerations.h"
#include "modele/poignees.h"
#include "modele/vie.h"

// How a class of the model is put before Python: one line an operation. Everything goes through
// `Appelle`, which asks first whether the frame is still open.
namespace zuma::python::modele {

/// What a call may do.
enum class Genre {
  Bref,    ///< quick: holds the interpreter meanwhile
  Geste,   ///< quick, and moves hardware
  Long,    ///< may wait
  Marche,  ///< may wait, and moves hardware
  Passe    ///< a pass: an exception inside it stops the frame
};

[[nodiscard]] constexpr bool Bouge(Genre genre) {
  return genre == Genre::Geste || genre == Genre::Marche || genre == Genre::Passe;
}
[[nodiscard]] constexpr bool EstLong(Genre genre) {
  return genre == Genre::Long || genre == Genre::Marche || genre == Genre::Passe;
}

/// Runs `travail`, with or without the interpreter's lock.
template <class Travail>
auto Fait(Genre genre, Travail&& travail) -> decltype(travail()) {
  if (!EstLong(genre)) return travail();
  const pybind11::gil_scoped_release libre;
  return travail();
}

/// One call of operation `source` on what lives on that leash.
template <class Travail>
auto Appelle(const std::shared_ptr<Laisse>& laisse, const std::string& source, Genre genre,
             Travail&& travail) -> decltype(travail()) {
  const bool passe = genre == Genre::Passe;
  try {
    Séjour séjour(laisse);
    if (Bouge(genre)) laisse->Touche();
    try {
      if constexpr (std::is_void_v<decltype(travail())>) {
        Fait(genre, travail);
        séjour.Conclut(passe);
      } else {
        auto résultat = Fait(genre, travail);
        séjour.Conclut(passe);
        return résultat;
      }
    } catch (const std::exception&) {  // what Python raised goes first
      séjour.Conclut(passe);
      throw;
    }
  } catch (const Echec& échec) {
    LèveEchec(échec, source);
  }
}

/// One call on what belongs to no frame: a collaborator.
template <class Travail>
auto AppelleLibre(Travail&& travail) -> decltype(travail()) {
  Séjour séjour;
  try {
    if constexpr (std::is_void_v<decltype(travail())>) {
      travail();
      séjour.Conclut();
    } else {
      auto résultat = travail();
      séjour.Conclut();
      return résultat;
    }
  } catch (const std::exception&) {  // what Python raised goes first
    séjour.Conclut();
    throw;
  }
}

namespace détail {

template <class F>
struct SignatureDe : SignatureDe<decltype(&F::operator())> {};
template <class R, class C, class... A>
struct SignatureDe<R (C::*)(A...) const> {
  using Type = R(A...);
};
template <class R, class C, class... A>
struct SignatureDe<R (C::*)(A...)> {
  using Type = R(A...);
};

template <class S>
struct SansPremier;
template <class R, class P, class... A>
struct SansPremier<R(P, A...)> {
  using Type = R(A...);
};

}  // namespace détail

/// Class of the handles of T, below the base that all of them share.
template <class T>
using ClassePython =
    std::conditional_t<std::derived_from<T, Objet>, pybind11::class_<PoignéeDe<T>, PoignéeDObjet>,
                       pybind11::class_<PoignéeDe<T>, Poignée>>;

/// A class of the model in Python. It was declared before (`DéclareLesClasses`), so that signatures
/// may name each other's classes.
template <class T>
class Classe {
 public:
  Classe(pybind11::module_& module, const char* nom, const char* doc)
      : nom_(nom), classe_(pybind11::reinterpret_borrow<ClassePython<T>>(module.attr(nom))) {
    classe_.attr("__doc__") = doc;
  }

  /// A property that is read: `lit(objet)`.
  template <class Lit>
  Classe& Lecture(const char* nom, Lit lit, const char* doc = "") {
    classe_.def_property_readonly(nom, Getter(nom, lit), doc);
    return *this;
  }
  /// One that is written too: `écrit(objet, valeur)`.
  template <class Lit, class Ecrit>
  Classe& Propriété(const char* nom, Lit lit, Ecrit écrit, const char* doc = "",
                    Genre genre = Genre::Bref) {
    using Valeur = std::decay_t<std::invoke_result_t<Lit, T&>>;
    const auto setter = [source = Source(nom), écrit, genre](PoignéeDe<T>& soi, Valeur valeur) {
      Appelle(soi.LaLaisse(), source, genre, [&] { écrit(soi.Objet(), std::move(valeur)); });
    };
    classe_.def_property(nom, Getter(nom, lit), setter, doc);
    return *this;
  }
  /// One that is written alone.
  template <class Valeur, class Ecrit>
  Classe& Ecriture(const char* nom, Ecrit écrit, const char* doc = "", Genre genre = Genre::Bref) {
    const auto setter = [source = Source(nom), écrit, genre](PoignéeDe<T>& soi, Valeur valeur) {
      Appelle(soi.LaLaisse(), source, genre, [&] { écrit(soi.Objet(), std::move(valeur)); });
    };
    classe_.def_property(nom, nullptr, pybind11::cpp_function(setter), doc);
    return *this;
  }
  /// An operation: `f(objet, arguments...)`.
  template <class F, class... Extra>
  Classe& Méthode(const char* nom, Genre genre, F f, const Extra&... extra) {
    using Signature = typename détail::SansPremier<typename détail::SignatureDe<F>::Type>::Type;
    Pose(nom, genre, f, static_cast<Signature*>(nullptr), extra...);
    return *this;
  }
  /// The class as pybind11 knows it, for what is none of these.
  [[nodiscard]] ClassePython<T>& Brute() { return classe_; }

 private:
  [[nodiscard]] std::string Source(const char* nom) const { return nom_ + "." + nom; }
  template <class Lit>
  auto Getter(const char* nom, Lit lit) const {
    using Rendu = std::decay_t<std::invoke_result_t<Lit, T&>>;
    return [source = Source(nom), lit](PoignéeDe<T>& soi) {
      return Appelle(soi.LaLaisse(), source, Genre::Bref,
                     [&]() -> Rendu { return lit(soi.Objet()); });
    };
  }
  template <class F, class R, class... A, class... Extra>
  void Pose(const char* nom, Genre genre, F f, R (*)(A...), const Extra&... extra) {
    using Rendu = std::decay_t<R>;
    const auto appel = [source = Source(nom), genre, f](PoignéeDe<T>& soi, A... a) {
      return Appelle(soi.LaLaisse(), source, genre, [&]() -> Rendu {
        return static_cast<Rendu>(f(soi.Objet(), std::forward<A>(a)...));
      });
    };
    classe_.def(nom, appel, extra...);
  }

  std::string nom_;
  ClassePython<T> classe_;
};

}  // namespace zuma::python::modele

///@{
/// Rows of the tables: the name of the member stands once.
#define ZUMA_LECTURE(Nom, ...) \
  Lecture(#Nom,                \
          [](auto& objet) -> decltype(auto) { return objet.Nom(); } __VA_OPT__(, ) __VA_ARGS__)
#define ZUMA_PROPRIETE(Nom, ...)                                       \
  Propriété(                                                           \
      #Nom, [](auto& objet) -> decltype(auto) { return objet.Nom(); }, \
      [](auto& objet, auto valeur) { objet.Nom(std::move(valeur)); } __VA_OPT__(, ) __VA_ARGS__)
#define ZUMA_FAIT(Nom, genre, ...) \
  Méthode(#Nom, Genre::genre, [](SoiMême& objet) { return objet.Nom(); } __VA_OPT__(, ) __VA_ARGS__)
///@}
