#include "modele/rappels.h"

namespace py = pybind11;

namespace zuma::python::modele {

std::shared_ptr<py::object> Retenu(py::object objet) {
  return {new py::object(std::move(objet)), [](py::object* retenu) {
            if (Py_IsInitialized() == 0) return;  // the interpreter is gone, and took it along
            const py::gil_scoped_acquire verrou;
            delete retenu;
          }};
}

Echec Retient(py::error_already_set&& exception) {
  const Echec échec(Numéro::ErreurDeLObjet, TexteDe(exception));
  Séjour::Retient(std::move(exception));
  return échec;
}

void LieLesAbonnements(py::module_& module) {
  py::class_<Abonnement>(module, "Abonnement",
                         "A handler that is registered. Call it, leave its `with`, or call "
                         "`Désabonne`: the handler is called no more.")
      .def("Désabonne", &Abonnement::Désabonne, "Takes the handler off; once.")
      .def("__call__", &Abonnement::Désabonne)
      .def("__bool__", &Abonnement::Abonné)
      .def("__enter__", [](py::object soi) { return soi; })
      .def("__exit__", [](Abonnement& soi, const py::args&) { soi.Désabonne(); });
}

}  // namespace zuma::python::modele
