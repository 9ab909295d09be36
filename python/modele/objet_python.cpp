// What every object of the tree has.
#include "core/chassis.h"
#include "modele/liaisons.h"
#include "modele/tables.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {
namespace {

template <class Travail>
auto Sur(PoignéeDObjet& soi, const char* source, Travail&& travail) {
  return Appelle(soi.LaLaisse(), source, Genre::Bref, [&] { return travail(soi.Objet()); });
}

template <class T>
void Déclare(py::module_& m, const char* nom) {
  ClassePython<T>(m, nom);
}

void LieLaPoignée(py::module_& m) {
  py::reinterpret_borrow<py::class_<Poignée>>(m.attr("Poignée"))
      .def("__eq__",
           [](const Poignée& a, const py::object& b) {
             return py::isinstance<Poignée>(b) && a.Même(b.cast<Poignée&>());
           })
      .def("__hash__", [](const Poignée& a) { return std::hash<const void*>()(a.Adresse()); })
      .def_property_readonly(
          "EstOuvert", [](const Poignée& a) { return a.LaLaisse()->Ouverte(); },
          "False once the frame is closed: every other member then raises ChassisFermé.");
}

}  // namespace

void DéclareLesClasses(py::module_& m) {
  py::class_<Poignée>(m, "Poignée",
                      "What lives with a frame. It answers for as long as the frame is open.");
  py::class_<PoignéeDObjet, Poignée>(m, "Objet", "An object of the tree of a frame.");
  Déclare<Chassis>(m, "Chassis");
  Déclare<Carte>(m, "Carte");
  Déclare<Fonction>(m, "Fonction");
  Déclare<Canal>(m, "Canal");
  Déclare<Capteur>(m, "Capteur");
  Déclare<Commande>(m, "Commande");
  Déclare<EntréeLogique>(m, "EntréeLogique");
  Déclare<SortieLogique>(m, "SortieLogique");
  Déclare<Watchdog>(m, "Watchdog");
  Déclare<Cartes>(m, "Cartes");
  Déclare<Fonctions>(m, "Fonctions");
  Déclare<Canals>(m, "Canals");
  Déclare<Capteurs>(m, "Capteurs");
  Déclare<Commandes>(m, "Commandes");
  Déclare<EntréeLogiques>(m, "EntréeLogiques");
  Déclare<SortieLogiques>(m, "SortieLogiques");
  Déclare<ZED_LiaisonSerie>(m, "ZED_LiaisonSerie");
  Déclare<PortInstrument>(m, "PortInstrument");
}

void LieLObjet(py::module_& m) {
  LieLaPoignée(m);
  py::reinterpret_borrow<py::class_<PoignéeDObjet, Poignée>>(m.attr("Objet"))
      .def_property(
          "Key",
          [](PoignéeDObjet& soi) {
            return Sur(soi, "Objet.Key", [](Objet& o) { return o.Key(); });
          },
          [](PoignéeDObjet& soi, const std::string& clé) {
            Sur(soi, "Objet.Key", [&](Objet& o) { o.Key(clé); });
          },
          "Index of the object's row as decimal text, its key in the collections.")
      .def(
          "TimerExact",
          [](PoignéeDObjet& soi, const Ref<ZED_Timer>& timer) {
            Sur(soi, "Objet.TimerExact", [&](Objet& o) { o.TimerExact(timer); });
          },
          "timer"_a, "Hands over the high-resolution timer.")
      .def(
          "ChargeErreur",
          [](PoignéeDObjet& soi, const Ref<ZED_Erreur>& registre) {
            return Sur(soi, "Objet.ChargeErreur",
                       [&](Objet& o) { return o.ChargeErreur(registre); });
          },
          "objLclErreur"_a, "Hands over the error record.")
      .def_property_readonly(
          "MotDeClasse",
          [](PoignéeDObjet& soi) {
            return Sur(soi, "Objet.MotDeClasse",
                       [](Objet& o) { return std::string(o.MotDeClasse()); });
          },
          "Class word of messages.")
      .def_property_readonly(
          "NomPourErreur",
          [](PoignéeDObjet& soi) {
            return Sur(soi, "Objet.NomPourErreur",
                       [](Objet& o) { return std::string(o.NomPourErreur()); });
          },
          "Name of the object in messages, empty until its row is read.")
      .def_property_readonly(
          "Erreur",
          [](PoignéeDObjet& soi) {
            return Sur(soi, "Objet.Erreur", [](Objet& o) { return o.Erreur(); });
          },
          "The error record of its loader; None without one.")
      .def(
          "Montre",
          [](PoignéeDObjet& soi, const std::string& texte) {
            Sur(soi, "Objet.Montre", [&](Objet& o) { o.Montre(texte); });
          },
          "texte"_a, "Shows a message of this object and waits for the answer.")
      .def("__repr__", [](const py::object& python) {
        auto& soi = python.cast<PoignéeDObjet&>();
        const std::string classe = py::str(py::type::of(python).attr("__name__"));
        if (!soi.LaLaisse()->Ouverte()) return "<" + classe + " of a closed frame>";
        return Sur(soi, "Objet.repr", [&](Objet& o) {
          return "<" + classe + " " + o.Key() + " '" + std::string(o.NomPourErreur()) + "'>";
        });
      });
}

}  // namespace zuma::python::modele
