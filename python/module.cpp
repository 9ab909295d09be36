#include <pybind11/pybind11.h>

#include "hote/hote_python.h"
#include "modele/modele_python.h"

PYBIND11_MODULE(_zuma, module) {
  module.doc() = "Native part of the package zuma.";
  pybind11::module_ modèle =
      module.def_submodule("modele", "The object model, under its own names.");
  zuma::python::LieLeModèle(modèle);
  zuma::python::LieLHôte(module);
}
