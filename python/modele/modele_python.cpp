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

}  // namespace

void LieLeModèle(py::module_& module) {
  modele::LieLesEnumerations(module);
  modele::LieLesEchecs(module);
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
  SuitLeProcessus();
}

}  // namespace zuma::python
