// What a frame stands on: the machine at hand, a simulated one, or services of Python's own.
#include <algorithm>
#include <pybind11/stl.h>

#include "modele/chassis_tenu.h"
#include "modele/liaisons.h"
#include "modele/plateforme.h"
#include "modele/services.h"
#include "modele/tables.h"
#include "tree/registre_des_drivers.h"

namespace py = pybind11;
using namespace py::literals;

namespace zuma::python::modele {

host::Machine& Machinerie::LaMachine() const {
  if (!machine) throw Echec::ObjetAbsent();
  return *machine;
}

PlateformeTenue::PlateformeTenue(std::shared_ptr<Machinerie> machinerie)
    : machinerie_(std::move(machinerie)),
      laisse_(std::make_shared<Laisse>(machinerie_->services, machinerie_, nullptr,
                                       machinerie_->passage)) {
  laisse_->Ouvre();
}

namespace {

using PlateformePython = std::unique_ptr<PlateformeTenue>;

// Messages of the library: to Python, or to the error output, where nobody is waited for.
BoîteDeMessage& Messages(Machinerie& machinerie, const Ref<BoîteDeMessage>& messages) {
  machinerie.messages = messages ? messages.Partagé() : std::make_shared<MessagesVersPython>();
  return *machinerie.messages;
}

PlateformePython AvecLaMachine(const std::shared_ptr<Machinerie>& machinerie) {
  machinerie->services = machinerie->machine->Services();
  return std::make_unique<PlateformeTenue>(machinerie);
}

PlateformePython Simulée(const Ref<BoîteDeMessage>& messages, host::Cadence cadence,
                         const Ref<RegistreDesDrivers>& drivers) {
  const auto machinerie = std::make_shared<Machinerie>();
  machinerie->machine = host::MachineSimulée(Messages(*machinerie, messages), cadence, drivers);
  return AvecLaMachine(machinerie);
}

PlateformePython Réelle(const Ref<BoîteDeMessage>& messages, const std::vector<std::string>& ports,
                        const std::vector<std::string>& can,
                        const Ref<RegistreDesDrivers>& drivers) {
  const auto machinerie = std::make_shared<Machinerie>();
  machinerie->machine =
      host::MachineRéelle(Messages(*machinerie, messages), host::LitLesPorts(ports, can), drivers);
  return AvecLaMachine(machinerie);
}

// In steps: between two of them another thread has its turn, with a stop for example.
constexpr double kPas = 0.01;  // seconds

double AvanceJusquA(PlateformeTenue& p, double secondes) {
  Machinerie& machinerie = *p.LaMachinerie();
  const auto fin = [&] { return std::min(secondes, machinerie.heure + kPas); };
  do {
    Appelle(p.LaLaisse(), "Plateforme.AvanceJusquA", Genre::Long,
            [&] { machinerie.heure = machinerie.LaMachine().AvanceJusquA(fin()); });
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  } while (machinerie.heure < secondes);
  return machinerie.heure;
}

template <class F>
auto SurLaMachine(const char* source, F f) {
  return [source, f](PlateformeTenue& p) {
    return Appelle(p.LaLaisse(), source, Genre::Bref,
                   [&] { return f(p.LaMachinerie()->LaMachine()); });
  };
}

void LieLaMachine(py::class_<PlateformeTenue>& classe) {
  classe
      .def_property_readonly(
          "Timer", SurLaMachine("Plateforme.Timer", [](host::Machine& m) { return m.Timer(); }),
          "The timer of the machine, for Chassis.TimerExact.")
      .def("AvanceJusquA", &AvanceJusquA, "secondes"_a,
           "Lets the time of the machine come to that many seconds after its first pass; gives the "
           "time that it is by then. Other threads have their turn meanwhile.")
      .def_property_readonly("InstantDePasse",
                             SurLaMachine("Plateforme.InstantDePasse",
                                          [](host::Machine& m) { return m.InstantDePasse(); }),
                             "Instant of the pass to come, microseconds of the machine's timer.")
      .def_property_readonly(
          "AuBout", SurLaMachine("Plateforme.AuBout", [](host::Machine& m) { return m.AuBout(); }),
          "Nothing comes any more.")
      .def_property_readonly(
          "Fini",
          SurLaMachine("Plateforme.Fini", [](host::Machine& m) { return std::string(m.Fini()); }),
          "Why the process has to end at once; empty while nothing asked for it.")
      .def(
          "Branche",
          [](PlateformeTenue& p, PoignéeDe<Chassis>& chassis) {
            Appelle(chassis.LaLaisse(), "Plateforme.Branche", Genre::Bref,
                    [&] { p.LaMachinerie()->LaMachine().Branche(chassis.Objet()); });
          },
          "chassis"_a, "Plugs what a loaded frame names; once, before Initialise.")
      .def(
          "Borne",
          [](PlateformeTenue& p, PoignéeDe<Canal>& canal) {
            return Appelle(p.LaLaisse(), "Plateforme.Borne", Genre::Bref,
                           [&] { return p.LaMachinerie()->LaMachine().Borne(canal.Objet()); });
          },
          "canal"_a, "What stands at the terminals of a channel; empty when nobody knows.")
      .def(
          "Rapporte",
          [](PlateformeTenue& p, const Ref<ZED_Erreur>& registre) {
            Appelle(p.LaLaisse(), "Plateforme.Rapporte", Genre::Bref,
                    [&] { p.LaMachinerie()->LaMachine().Rapporte(*registre); });
          },
          "registre"_a, "Hands over what its adapters told on their own.");
}

// Objects of no frame yet.
template <class T>
void LieLaCréation(py::module_& m, const char* nom) {
  py::reinterpret_borrow<ClassePython<T>>(m.attr(nom))
      .def(py::init([](PlateformeTenue& plateforme) { return plateforme.Nouveau<T>(); }),
           "plateforme"_a, "One of no frame yet; it ends with the platform.");
}

void LieLesCréations(py::module_& m) {
  LieLaCréation<Carte>(m, "Carte");
  LieLaCréation<Fonction>(m, "Fonction");
  LieLaCréation<Canal>(m, "Canal");
  LieLaCréation<Capteur>(m, "Capteur");
  LieLaCréation<Commande>(m, "Commande");
  LieLaCréation<EntréeLogique>(m, "EntréeLogique");
  LieLaCréation<SortieLogique>(m, "SortieLogique");
  LieLaCréation<Watchdog>(m, "Watchdog");
  LieLaCréation<Cartes>(m, "Cartes");
  LieLaCréation<Fonctions>(m, "Fonctions");
  LieLaCréation<Canals>(m, "Canals");
  LieLaCréation<Capteurs>(m, "Capteurs");
  LieLaCréation<Commandes>(m, "Commandes");
  LieLaCréation<EntréeLogiques>(m, "EntréeLogiques");
  LieLaCréation<SortieLogiques>(m, "SortieLogiques");
}

// A service that Python gives, under the name of the model. It counts for frames made from then on.
template <class T>
void LieLeService(py::class_<PlateformeTenue>& classe, const char* nom,
                  Pointeur<T> Plateforme::* service, const char* doc) {
  classe.def_property(
      nom,
      [nom](PlateformeTenue& p) -> py::object {
        const auto& données = p.LaMachinerie()->données;
        const auto ici = données.find(nom);
        return ici == données.end() ? py::object(py::none()) : *ici->second;
      },
      [nom, service](PlateformeTenue& p, const std::shared_ptr<T>& donné) {
        Machinerie& machinerie = *p.LaMachinerie();
        machinerie.services.*service = donné.get();
        machinerie.données[nom] = Retenu(donné ? py::cast(donné) : py::object(py::none()));
      },
      doc);
}

void LieLesServicesDonnés(py::class_<PlateformeTenue>& classe) {
  LieLeService(classe, "messages", &Plateforme::messages,
               "Notices to integrator and operator, where Python gave them.");
  LieLeService(classe, "ports", &Plateforme::ports, "I/O ports, where Python gave them.");
  LieLeService(classe, "compteurs", &Plateforme::compteurs, "Fine counters, likewise.");
  LieLeService(classe, "horloge", &Plateforme::horloge, "Time of the day, likewise.");
  LieLeService(classe, "fichiers", &Plateforme::fichiers, "Text files, likewise.");
  LieLeService(classe, "fin", &Plateforme::fin, "End of the process, likewise.");
  classe
      .def_property(
          "drivers", [](PlateformeTenue& p) { return p.LaMachinerie()->services.drivers; },
          [](PlateformeTenue& p, const Ref<RegistreDesDrivers>& d) {
            p.LaMachinerie()->services.drivers = d;
          },
          "Drivers that frames made from then on may name.")
      .def_property_readonly(
          "réglages", [](PlateformeTenue& p) { return &p.LaMachinerie()->services.réglages; },
          "Settings of the installation; frames made from then on take them.")
      .def_property_readonly(
          "heureDePasse",
          [](PlateformeTenue& p) { return p.LaMachinerie()->services.heureDePasse; },
          "Time of the present pass for objects of no frame, seconds.");
}

}  // namespace

void LieLaPlateforme(py::module_& m) {
  py::class_<PlateformeTenue> classe(
      m, "Plateforme",
      "Services of the machine below the library. Made empty, it takes those that Python writes.");
  classe.def(
      py::init([] { return std::make_unique<PlateformeTenue>(std::make_shared<Machinerie>()); }));
  LieLaMachine(classe);
  LieLesServicesDonnés(classe);
  LieLesCréations(m);
  m.def("PlateformeSimulée", &Simulée, "messages"_a = Ref<BoîteDeMessage>(),
        "cadence"_a = host::Cadence::Libre, "drivers"_a = Ref<RegistreDesDrivers>(),
        "A simulated machine: twins for all that a frame names, the demo frame's press included.");
  m.def("PlateformeRéelle", &Réelle, "messages"_a = Ref<BoîteDeMessage>(),
        "ports"_a = std::vector<std::string>(), "can"_a = std::vector<std::string>(),
        "drivers"_a = Ref<RegistreDesDrivers>(),
        "The machine at hand; `ports` as \"4=/dev/ttyUSB0\", `can` as \"1:0=can0\".");
}

}  // namespace zuma::python::modele
