#include "modele/echecs.h"

#include <pybind11/eval.h>

#include "modele/vie.h"

namespace py = pybind11;

namespace zuma::python::modele {
namespace {

constexpr const char* kClasses = R"(
class Echec(Exception):
    """A failure of an operation of the model, with the words of the error record.

    Numéro       number, as messages show it after "Erreur N°"; see the enumeration Numéro
    Description  what went wrong, French
    Source       the operation that failed, "Capteur.PointX" for example
    Ligne        line of the library's source, 0 when it is not known
    """

    def __init__(self, Numéro, Description=None, Source="", Ligne=0):
        if Description is None:
            Description = DescriptionDEchec(Numéro)
        super().__init__(Numéro, Description)
        self.Numéro, self.Description = Numéro, Description
        self.Source, self.Ligne = Source, Ligne

    def __str__(self):
        où = f" [{self.Source}]" if self.Source else ""
        return f"Erreur N°{int(self.Numéro)} ({self.Description}){où}"


class ChassisFermé(Echec):
    """The frame of this object is closed: nothing reaches it any more."""

Echec.__module__ = ChassisFermé.__module__ = "zuma.modele"
)";

// They live as long as the interpreter.
struct Classes {
  py::handle échec;
  py::handle fermé;
};
Classes& LesClasses() {
  static Classes classes;
  return classes;
}

bool EstFermé(const Echec& échec) {
  return dynamic_cast<const ChassisFermé*>(&échec) != nullptr;
}

void Pose(const Echec& échec, const std::string& source) {
  const py::handle classe = EstFermé(échec) ? LesClasses().fermé : LesClasses().échec;
  const py::object objet = classe(échec.NuméroErreur(), échec.Description(), source, échec.Ligne());
  PyErr_SetObject(classe.ptr(), objet.ptr());
}

}  // namespace

void LieLesEchecs(py::module_& module) {
  module.def(
      "DescriptionDEchec",
      [](int numéro) { return zuma::DescriptionDEchec(static_cast<Numéro>(numéro)); },
      py::arg("numéro"), "French description of a numbered failure, as it stands in messages.");
  py::exec(kClasses, module.attr("__dict__"));
  LesClasses() = {py::object(module.attr("Echec")).release(),
                  py::object(module.attr("ChassisFermé")).release()};
  py::register_local_exception_translator([](std::exception_ptr exception) {
    try {
      if (exception) std::rethrow_exception(exception);
    } catch (const Echec& échec) {
      Pose(échec, {});
    }
  });
}

void LèveEchec(const Echec& échec, const std::string& source) {
  Pose(échec, source);
  throw py::error_already_set();
}

bool EstUnEchec(const py::error_already_set& exception) {
  return exception.matches(LesClasses().échec);
}

Echec EchecDePython(const py::error_already_set& exception) {
  const py::object valeur = exception.value();
  const auto numéro = static_cast<Numéro>(py::cast<int>(py::int_(valeur.attr("Numéro"))));
  return {numéro, py::str(valeur.attr("Description"))};
}

}  // namespace zuma::python::modele
