#include "modele/modele_python.h"

#include "modele/echecs.h"
#include "modele/rappels.h"
#include "modele/tables.h"
#include "modele/vie.h"

namespace py = pybind11;

namespace zuma::python {
namespace {

// A frame must not be left under its last set point by a program that ends, and a child process has
// none of its parent's frames.
void SuitLeProcessus() {
  py::module_::import("atexit").attr("register")(py::cpp_function(&modele::Laisse::FermeTout));
  using namespace py::literals;
  py::module_::import("os").attr("register_at_fork")(
      "after_in_child"_a = py::cpp_function(&modele::Laisse::APartirDUnEnfant));
}

// Where people import it from.
void NommeLeModule(const py::module_& module, const char* nom) {
  for (const auto& [clé, membre] : py::dict(module.attr("__dict__"))) {
    if (py::isinstance<py::type>(membre)) membre.attr("__module__") = nom;
  }
}

}  // namespace

void LieLeModèle(py::module_& module) {
  modele::LieLesEnumerations(module);
  modele::LieLesEchecs(module);
  modele::DéclareLesClasses(module);
  modele::LieLesAbonnements(module);
  modele::LieLesCollaborateurs(module);
  modele::LieLesServices(module);
  modele::LieLaBase(module);
  modele::LieLesDrivers(module);
  modele::LieLObjet(module);
  modele::LieLesLiaisons(module);
  modele::LieLesCalculs(module);
  modele::LieLaPlateforme(module);
  modele::LieLesCollections(module);
  modele::LieLArbre(module);
  modele::LieLesCapteurs(module);
  modele::LieLesCommandes(module);
  modele::LieLaLogique(module);
  modele::LieLeChassis(module);
  modele::LieLesObjetsDeLHôte(module);
  NommeLeModule(module, "zuma.modele");
  NommeLeModule(module.attr("section"), "zuma.modele.section");
  NommeLeModule(module.attr("servo"), "zuma.modele.servo");
  SuitLeProcessus();
}

}  // namespace zuma::python
