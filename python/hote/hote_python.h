#pragma once

#include <pybind11/pybind11.h>

namespace zuma::python {

/// Puts what runs and watches a frame into `module`, for the package `zuma`.
void LieLHôte(pybind11::module_& module);

}  // namespace zuma::python
