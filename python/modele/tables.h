#pragma once

#include <pybind11/pybind11.h>

// One group of classes each; `LieLeModèle` calls them in an order in which each finds its bases.
namespace zuma::python::modele {

/// Names the classes of handles, each without its members.
void DéclareLesClasses(pybind11::module_& module);
void LieLesEnumerations(pybind11::module_& module);
void LieLesCollaborateurs(pybind11::module_& module);
void LieLesServices(pybind11::module_& module);
void LieLesCollections(pybind11::module_& module);
void LieLObjet(pybind11::module_& module);
void LieLArbre(pybind11::module_& module);
void LieLesLiaisons(pybind11::module_& module);
void LieLesDrivers(pybind11::module_& module);
void LieLesCalculs(pybind11::module_& module);
void LieLesCapteurs(pybind11::module_& module);
void LieLesCommandes(pybind11::module_& module);
void LieLaLogique(pybind11::module_& module);
void LieLeChassis(pybind11::module_& module);
void LieLaPlateforme(pybind11::module_& module);
void LieLaBase(pybind11::module_& module);
void LieLesObjetsDeLHôte(pybind11::module_& module);

}  // namespace zuma::python::modele
