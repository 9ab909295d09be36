#pragma once

#include <pybind11/pybind11.h>

namespace zuma::python {

/// Puts the object model into `module`: classes, enumerations and failures.
void LieLeModèle(pybind11::module_& module);

}  // namespace zuma::python
