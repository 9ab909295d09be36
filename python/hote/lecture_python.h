#pragma once

#include <pybind11/pybind11.h>

namespace zuma::python {

/// To look at a frame that any program of this machine runs, or ran, and to read recordings.
void LieLaLecture(pybind11::module_& module);

}  // namespace zuma::python
