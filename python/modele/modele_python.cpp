#include "modele/modele_python.h"

namespace zuma::python {

void LieLeModèle(pybind11::module_&) {}

}  // namespace zuma::python
