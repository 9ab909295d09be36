#include "modele/conversions.h"

#include <cstdint>

namespace py = pybind11;

namespace zuma::python::modele {

bool EntierDePython(py::handle source, long long& entier) {
  if (!source || PyIndex_Check(source.ptr()) == 0) return false;
  const auto nombre = py::reinterpret_steal<py::object>(PyNumber_Index(source.ptr()));
  if (!nombre) throw py::error_already_set();
  int dehors = 0;
  entier = PyLong_AsLongLongAndOverflow(nombre.ptr(), &dehors);
  return dehors == 0;
}

namespace {

bool Entier(py::handle source, Valeur& valeur) {
  long long entier = 0;
  if (!EntierDePython(source, entier)) return false;
  if (entier < INT32_MIN || entier > INT32_MAX) {
    valeur = static_cast<double>(entier);
  } else {
    valeur = static_cast<std::int32_t>(entier);
  }
  return true;
}

// A scalar of numpy tells what it is by its type alone: it is neither bool nor float.
bool EstUnBooléen(py::handle source) {
  return PyBool_Check(source.ptr()) ||
         std::string_view(Py_TYPE(source.ptr())->tp_name) == std::string_view("numpy.bool_");
}

bool Réel(py::handle source, Valeur& valeur) {
  if (!PyFloat_Check(source.ptr()) && Py_TYPE(source.ptr())->tp_as_number == nullptr) return false;
  const double réel = PyFloat_AsDouble(source.ptr());
  if (PyErr_Occurred() != nullptr) {
    PyErr_Clear();
    return false;
  }
  valeur = réel;
  return true;
}

}  // namespace

bool ValeurDePython(py::handle source, Valeur& valeur) {
  if (!source) return false;
  if (source.is_none()) {
    valeur = Nul{};
    return true;
  }
  if (PyUnicode_Check(source.ptr())) {
    valeur = source.cast<std::string>();
    return true;
  }
  if (EstUnBooléen(source)) {
    valeur = PyObject_IsTrue(source.ptr()) == 1;
    return true;
  }
  return Entier(source, valeur) || Réel(source, valeur);
}

py::object ValeurEnPython(const Valeur& valeur) {
  return std::visit(
      [](const auto& v) -> py::object {
        if constexpr (std::is_same_v<std::decay_t<decltype(v)>, Nul>) {
          return py::none();
        } else {
          return py::cast(v);
        }
      },
      valeur);
}

}  // namespace zuma::python::modele
