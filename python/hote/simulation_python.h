#pragma once

#include <pybind11/pybind11.h>

namespace zuma::python {

/// The simulated machine of an open frame: press, contacts, terminals, faults.
void LieLaSimulation(pybind11::module_& module);

}  // namespace zuma::python
