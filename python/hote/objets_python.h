#pragma once

#include <pybind11/pybind11.h>

namespace zuma::python {

/// Sensors, commands, logic inputs and outputs, watchdog, boards and channels of an open frame.
void LieLesObjets(pybind11::module_& module);

}  // namespace zuma::python
