// Rows of drivers, to be looked at and to be handed to a platform.
#include "boards/table_des_drivers.h"
#include "modele/liaisons.h"
#include "modele/tables.h"
#include "tree/registre_des_drivers.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

// Rows outlive every frame.
constexpr auto kEnPlace = py::return_value_policy::reference;

void LieLaLigne(py::module_& m) {
  const auto texte = [](std::string_view LigneDriver::* membre) {
    return [membre](const LigneDriver& l) { return std::string(l.*membre); };
  };
  py::class_<LigneDriver, std::unique_ptr<LigneDriver, py::nodelete>>(
      m, "LigneDriver", "One driver: its number, its texts and how the pass serves it.")
      .def_readonly("version", &LigneDriver::version, "Form of the row.")
      .def_property_readonly(
          "valeur", [](const LigneDriver& l) { return l.valeur; }, "Its number.")
      .def_property_readonly("nom", texte(&LigneDriver::nom), "Name of the number.")
      .def_property_readonly("affichage", texte(&LigneDriver::affichage), "As shown in dumps.")
      .def_property_readonly("texteCarte", texte(&LigneDriver::texteCarte),
                             "Column \"Driver de la Carte\".")
      .def_property_readonly("texteFonction", texte(&LigneDriver::texteFonction),
                             "Column \"Driver\" of a block.")
      .def_property_readonly("texteCanal", texte(&LigneDriver::texteCanal),
                             "Column \"Driver canal\".")
      .def_property_readonly("câblage", texte(&LigneDriver::câblage),
                             "What an integrator should know about its wires.")
      .def_property_readonly(
          "types", [](const LigneDriver& l) { return int{l.types}; },
          "Block types that it serves, one bit each.")
      .def_property_readonly(
          "service", [](const LigneDriver& l) { return l.service; },
          "How the pass serves a board of it.")
      .def_property_readonly(
          "attente", [](const LigneDriver& l) { return l.attente; },
          "What a refresh of such a board may wait for.")
      .def_readonly("période", &LigneDriver::période, "Seconds between two readings.")
      .def_readonly("surLaLigneDeLaCarte", &LigneDriver::surLaLigneDeLaCarte)
      .def_readonly("élagueLesSorties", &LigneDriver::élagueLesSorties)
      .def_readonly("lignesLues", &LigneDriver::lignesLues)
      .def_readonly("sortieQuiDémarre", &LigneDriver::sortieQuiDémarre,
                    "True on output 0 starts a machine.")
      .def("EstLaisséeALHôte", &LigneDriver::EstLaisséeALHôte,
           "No pass refreshes such a board: its host does.")
      .def("Sert", &LigneDriver::Sert, "type"_a, "True when blocks of that type may name it.");
}

}  // namespace

void LieLesDrivers(py::module_& m) {
  LieLaLigne(m);
  py::class_<RegistreDesDrivers, std::shared_ptr<RegistreDesDrivers>>(
      m, "RegistreDesDrivers", "The drivers that a frame may use.")
      .def("DeValeur", &RegistreDesDrivers::DeValeur, "valeur"_a, kEnPlace, "The row of a number.")
      .def("DeCarte", &RegistreDesDrivers::DeCarte, "texte"_a, kEnPlace,
           "The row of a text of column \"Driver de la Carte\".")
      .def("DeFonction", &RegistreDesDrivers::DeFonction, "texte"_a, kEnPlace,
           "The row of a text of column \"Driver\".")
      .def("DeCanal", &RegistreDesDrivers::DeCanal, "texte"_a, kEnPlace,
           "The row of a text of column \"Driver canal\".")
      .def_property_readonly(
          "Tous",
          [](const RegistreDesDrivers& r) {
            return std::vector<const LigneDriver*>(r.Tous().begin(), r.Tous().end());
          },
          kEnPlace, "All rows, in the order in which they were added.");
  m.def("CréeLesDrivers", &CréeLesDrivers, "A registry of the library's own drivers.");
}

}  // namespace zuma::python::modele
