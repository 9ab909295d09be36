#include "hote/erreurs.h"

#include <array>
#include <string_view>

#include "host/configuration.h"
#include "host/depart.h"
#include "publication/lecture/zone.h"
#include "publication/place.h"

namespace zuma::python {
namespace {

namespace py = pybind11;

constexpr std::array<const char*, 4> kOrigines{"file", "data", "message", "failure"};

py::object Classe(const char* nom) {
  return py::module_::import("zuma.errors").attr(nom);
}

void Lève(const char* nom, const py::args& arguments) {
  const py::object classe = Classe(nom);
  const py::object erreur = classe(*arguments);
  PyErr_SetObject(classe.ptr(), erreur.ptr());
}

void Lève(const char* nom, const std::exception& échec) {
  Lève(nom, py::make_tuple(échec.what()));
}

py::object EnPython(const host::Problème& p) {
  using py::literals::operator""_a;
  return Classe("Problem")(
      "table"_a = p.table, "row"_a = p.ligne, "column"_a = p.colonne, "found"_a = p.trouvé,
      "expected"_a = p.attendu, "object"_a = p.objet, "text"_a = p.texte,
      "origin"_a = kOrigines[static_cast<std::size_t>(p.origine)],
      "warning"_a = p.gravité == host::Gravité::Avertissement, "line"_a = host::Ligne(p));
}

void Traduit(std::exception_ptr échec) {
  try {
    if (échec) std::rethrow_exception(échec);
  } catch (const Erreur& e) {
    Lève(e.classe, e);
  } catch (const host::DépartRefusé& e) {
    Lève("FrameRefused", py::make_tuple(e.what(), python::EnPython(e.Problèmes())));
  } catch (const publication::DéjàEnMarche& e) {
    Lève("AlreadyRunning", py::make_tuple(e.what(), e.pid));
  } catch (const publication::Illisible& e) {
    Lève("Unreadable", e);
  } catch (const host::MauvaisUsage& e) {
    Lève("UsageError", e);
  }
}

}  // namespace

py::list EnPython(const std::vector<host::Problème>& problèmes) {
  py::list liste;
  for (const host::Problème& problème : problèmes) liste.append(EnPython(problème));
  return liste;
}

void TraduitLesErreurs() {
  py::register_exception_translator(&Traduit);
}

}  // namespace zuma::python
