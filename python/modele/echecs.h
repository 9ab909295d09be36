#pragma once

#include <pybind11/pybind11.h>
#include <string>

#include "base/echec.h"

namespace zuma::python::modele {

/// Classes `Echec` and `ChassisFermé` of the module.
void LieLesEchecs(pybind11::module_& module);
/// Raises `Echec` in Python for a failure of operation `source`.
[[noreturn]] void LèveEchec(const Echec& échec, const std::string& source);
/// An `Echec` that Python raised, as the model's own; false for every other exception.
[[nodiscard]] bool EstUnEchec(const pybind11::error_already_set& exception);
[[nodiscard]] Echec EchecDePython(const pybind11::error_already_set& exception);

}  // namespace zuma::python::modele
