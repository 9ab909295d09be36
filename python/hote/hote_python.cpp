#include "hote/hote_python.h"

namespace zuma::python {

void LieLHôte(pybind11::module_&) {}

}  // namespace zuma::python
