// Small parts of the model that stand alone: specimen, slope, table, servo-valve.
#include <pybind11/functional.h>

#include "base/table_etalonnage.h"
#include "commands/dither.h"
#include "commands/servo.h"
#include "modele/liaisons.h"
#include "modele/tables.h"
#include "sensors/parametres_eprouvette.h"
#include "sensors/regression.h"
#include "sensors/section.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

void LieLaTable(py::module_& m) {
  py::class_<TableEtalonnage>(m, "TableEtalonnage",
                              "Calibration table: up to 20 rows of units and points.")
      .def(py::init<>())
      .def("PointX", py::overload_cast<std::int16_t>(&TableEtalonnage::PointX, py::const_),
           "indice"_a, "Unit value of row 0 to 20; outside, failure 9.")
      .def("PointX", py::overload_cast<std::int16_t, double>(&TableEtalonnage::PointX), "indice"_a,
           "unités"_a)
      .def("PointY", py::overload_cast<std::int16_t>(&TableEtalonnage::PointY, py::const_),
           "indice"_a, "Point value of row 0 to 20; outside, failure 9.")
      .def("PointY", py::overload_cast<std::int16_t, double>(&TableEtalonnage::PointY), "indice"_a,
           "points"_a)
      .def("VersUnités", &TableEtalonnage::VersUnités, "points"_a, "Points to units.")
      .def("VersPoints", &TableEtalonnage::VersPoints, "unités"_a, "Units to points.")
      .def_property_readonly("DernièreRangée", &TableEtalonnage::DernièreRangée,
                             "Last row that is used; 0 when none is.");
}

void LieLaSection(py::module_& module) {
  py::module_ m = module.def_submodule("section", "Section of a specimen.");
  using E = section::Eprouvette;
  py::class_<E> classe(m, "Eprouvette", "Specimen as the operator describes it.");
  classe.def(py::init<>())
      .def_property(
          "essai", [](const E& e) { return e.essai; },
          [](E& e, ENUM_TYPE_CONTRAINTE v) { e.essai = v; }, "kind of test")
      .def_property(
          "forme", [](const E& e) { return e.forme; },
          [](E& e, ENUM_FORME_EPROUVETTE v) { e.forme = v; }, "shape")
      .def_property(
          "méthode", [](const E& e) { return e.méthode; },
          [](E& e, ENUM_TYPE_CALCUL_SURFACE v) { e.méthode = v; },
          "dimensions, or mass and density");
  const std::pair<const char*, double E::*> dimensions[] = {
      {"A", &E::A},
      {"B", &E::B},
      {"D", &E::D},
      {"E", &E::E},
      {"H", &E::H},
      {"L", &E::L},
      {"S", &E::S},
      {"Grand_L", &E::Grand_L},
      {"Petit_L", &E::Petit_L},
      {"masse", &E::masse},
      {"masseVolumique", &E::masseVolumique},
      {"kLongueur", &E::kLongueur},
      {"kMasse", &E::kMasse},
      {"kMasseVolumique", &E::kMasseVolumique},
  };
  for (const auto& [nom, membre] : dimensions) classe.def_readwrite(nom, membre);
  m.def("Calcule", &section::Calcule, "éprouvette"_a,
        "Section in square centimetres; 0 for what has no formula.");
  m.def("CoefficientUnité", &section::CoefficientUnité, "unité"_a,
        "Factor of a unit to centimetres, grams, grams per cubic decimetre; 0: not known.");
}

void LieLesParamètres(py::module_& m) {
  using P = ParamètresEprouvette;
  const auto texte = [](std::string_view LigneParamètre::* membre) {
    return [membre](const LigneParamètre& l) { return std::string(l.*membre); };
  };
  py::class_<LigneParamètre>(m, "LigneParamètre", "What a parameter of a specimen is called.")
      .def_property_readonly("colonne", texte(&LigneParamètre::colonne), "column of the row")
      .def_property_readonly("message", texte(&LigneParamètre::message), "name in messages")
      .def_property_readonly("gestionnaire", texte(&LigneParamètre::gestionnaire),
                             "handler of its Change; empty when nothing depends on it");
  m.attr("kLignesParamètres") = py::cast(kLignesParamètres);
  m.attr("kNombreParamètres") = kNombreParamètres;
  py::class_<P, std::shared_ptr<P>>(m, "ParamètresEprouvette", "The parameters of one sensor.")
      .def(py::init<>())
      .def(
          "Index",
          [](P& p, std::size_t rang, std::int32_t index) {
            if (rang >= kNombreParamètres) throw Echec(Numéro::IndiceHorsPlage);
            p.Index(rang, index);
          },
          "rang"_a, "index"_a, "Index of a parameter in the host's set; 0 is none.")
      .def(
          "Lie",
          [](P& p, const ParamètresRef& partagés, const P::Absent& absent,
             const P::Change& change) { p.Lie(*partagés, absent, change); },
          "partagés"_a, "absent"_a, "change"_a,
          "Takes the parameters of these indices: absent(row, index), change(row).")
      .def("Délie", &P::Délie, "Forgets all parameters and takes the handlers off.")
      .def(
          "__getitem__",
          [](const P& p, ParamEprouvette rang) {
            if (static_cast<std::size_t>(rang) >= kNombreParamètres) throw py::index_error();
            return p[rang];
          },
          "rang"_a, "The parameter; None without.")
      .def(
          "Texte", [](const P& p, ParamEprouvette rang) { return std::string(p.Texte(rang)); },
          "rang"_a, "The value as text; None fails with 91.")
      .def("Nombre", &P::Nombre, "rang"_a, "The value as a number; fails with 91 and 13.")
      .def("NombreSûr", &P::NombreSûr, "rang"_a, "The value as a number, or None.");
}

void LieLeServo(py::module_& module) {
  py::module_ m = module.def_submodule("servo", "Compensation of a servo-valve.");
  using namespace servo;
  py::class_<Pressions>(m, "Pressions", "Pressures of the two sensors, in one unit.")
      .def(py::init([](std::optional<double> alimentation, std::optional<double> utilisation) {
             return Pressions{alimentation, utilisation};
           }),
           "alimentation"_a = py::none(), "utilisation"_a = py::none())
      .def_readwrite("alimentation", &Pressions::alimentation, "supply sensor")
      .def_readwrite("utilisation", &Pressions::utilisation, "use sensor");
  py::class_<Compensation>(m, "Compensation", "What the pressures give.")
      .def(py::init<>())
      .def_readwrite("coefficient", &Compensation::coefficient, "0.7 to 10")
      .def_readwrite("Palim", &Compensation::Palim, "supply pressure")
      .def_readwrite("Putil", &Compensation::Putil, "use pressure");
  py::class_<Décalage>(m, "Décalage", "Offset of the valve.")
      .def(py::init<>())
      .def_readwrite("fixe", &Décalage::fixe, "units")
      .def_readwrite("pente", &Décalage::pente, "units per unit of the use pressure")
      .def("Pour", &Décalage::Pour, "c"_a, "Offset at these pressures, in units.");
  py::class_<Relevé>(m, "Relevé", "One refresh of a servo command.")
      .def(py::init<>())
      .def_readwrite("unités", &Relevé::unités, "command asked for")
      .def_readwrite("compensation", &Relevé::compensation)
      .def_readwrite("décalage", &Relevé::décalage, "offset, units")
      .def_readwrite("corrigée", &Relevé::corrigée, "command sent, units")
      .def_readwrite("points", &Relevé::points, "command sent, points");
  m.attr("kCoefMini") = kCoefMini;
  m.attr("kCoefMaxi") = kCoefMaxi;
  m.attr("kEntêteDuJournal") = std::string(kEntêteDuJournal);
  m.def("CalculeCoefServo", &CalculeCoefServo, "unités"_a, "pressions"_a);
  m.def("Corrige", &Corrige, "unités"_a, "c"_a, "décalage"_a);
  m.def("Décorrige", &Décorrige, "corrigée"_a, "c"_a, "décalage"_a);
  m.def("LigneDuJournal", &LigneDuJournal, "relevé"_a, "séparateur"_a = ',');
}

void LieLeDither(py::module_& m) {
  py::class_<Dither>(m, "Dither", "Schedule of a dither; all times in seconds.")
      .def(py::init<>())
      .def("Recale", &Dither::Recale, "t"_a, "Starts the schedule, on neither side.")
      .def("EstDû", &Dither::EstDû, "t"_a, "fréquence"_a, "The planned toggle is past.")
      .def("PlanifieAvecRetard", &Dither::PlanifieAvecRetard, "t"_a, "fréquence"_a,
           "Plans the next toggle, with the lateness of the last.")
      .def("Planifie", &Dither::Planifie, "t"_a, "fréquence"_a, "The same without it.")
      .def("Bascule", &Dither::Bascule, "Goes to the other side; the first is the low one.")
      .def("Valeur", &Dither::Valeur, "base"_a, "amplitude"_a, "Value of this half period.");
  m.def("AmplitudeUtilisable", &AmplitudeUtilisable, "base"_a, "amplitude"_a, "mini"_a, "maxi"_a,
        "Peak-to-peak amplitude that keeps the wave between the limits.");
}

}  // namespace

void LieLesCalculs(py::module_& m) {
  LieLaTable(m);
  LieLaSection(m);
  LieLesParamètres(m);
  LieLeServo(m);
  LieLeDither(m);
  py::class_<Régression>(m, "Régression", "Slope of a value against time over a run of samples.")
      .def(py::init<>())
      .def_readonly_static("kCapacité", &Régression::kCapacité, "Longest run, in samples.")
      .def("Ajoute", &Régression::Ajoute, "t"_a, "v"_a, "N"_a,
           "Adds a sample; the slope in units per second, None when undefined.");
}

}  // namespace zuma::python::modele
