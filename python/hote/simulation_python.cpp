#include "hote/simulation_python.h"

#include <cmath>
#include <pybind11/stl.h>

#include "host/pannes.h"
#include "hote/erreurs.h"
#include "hote/poignee.h"

namespace zuma::python {
namespace {

namespace py = pybind11;

/// The twins of a frame's machine.
struct Simulation {
  std::shared_ptr<Session> session;

  sim::MachineSimulée& operator*() const {
    sim::MachineSimulée* machine = session->LaJumelle();
    if (machine == nullptr) throw Erreur("UsageError", "this frame runs on a real machine");
    return *machine;
  }
  sim::MachineSimulée* operator->() const { return &**this; }
};

/// What a channel is wired to.
struct BorneTenue {
  std::shared_ptr<Session> session;
  Canal* canal;
  sim::Borne borne;

  [[nodiscard]] ENUM_TYPE_FONCTION Type() const { return session->Exige(), canal->TypeCanal(); }
  void Tient(double volts, bool logique) {
    const auto voulu = logique ? ENUM_TYPE_FONCTION::FctEntréesLogiques
                               : ENUM_TYPE_FONCTION::FctEntréesAnalogiques;
    if (Type() != voulu) {
      throw Erreur("UsageError", "channel " + canal->Nom() + " is no " +
                                     (logique ? "logic" : "analog") + " input");
    }
    session->tenues.insert_or_assign(canal->Key(), Session::Tenue{borne, volts, logique});
  }
  void Lâche() const { session->Exige(), session->tenues.erase(canal->Key()); }
  [[nodiscard]] double Volts() {
    return Type() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques
               ? borne.TensionSortie()
               : borne.DeLaCarte().entréesAnalogiques[borne.Ligne()];
  }
};

BorneTenue Borne(const Simulation& s, const Poignée<Canal>& canal) {
  const auto borne = s->BorneDe(*canal);
  if (!borne) throw Erreur("UsageError", "channel " + canal->Nom() + " has no terminal");
  return {s.session, &*canal, *borne};
}

// A time without an end or a beginning holds from now on.
void Panne(const Simulation& s, const std::string& texte) {
  const auto pannes = host::LitLesPannes(texte, s.session->LeChoix().graine);
  s->pannes.insert(s->pannes.end(), pannes.begin(), pannes.end());
}

template <auto Membre>
auto& Réglage(const Simulation& s) {
  return s->presse.Réglages().*Membre;
}

template <auto Membre>
void Pose(const Simulation& s, double valeur) {
  if (!(std::isfinite(valeur) && valeur > 0)) {
    throw Erreur("UsageError", "the press takes finite numbers above 0");
  }
  Réglage<Membre>(s) = valeur;
}

template <auto Membre>
bool Contact(const Simulation& s) {
  return s->presse.*Membre;
}

template <auto Membre>
void Commute(const Simulation& s, bool état) {
  s->presse.*Membre = état;
}

template <auto Membre>
void LieUnRéglage(py::class_<Simulation>& classe, const char* nom, const char* texte) {
  classe.def_property(
      nom, [](const Simulation& s) { return Réglage<Membre>(s); }, &Pose<Membre>, texte);
}

void LieLaPresse(py::class_<Simulation>& classe) {
  using R = sim::RéglagesPresse;
  LieUnRéglage<&R::raideurEprouvette>(classe, "stiffness", "Of the specimen, newtons per metre.");
  LieUnRéglage<&R::rupture>(classe, "break_force", "Force at which the specimen breaks, newtons.");
  LieUnRéglage<&R::contact>(classe, "contact",
                            "Position of the piston where the platen meets the specimen, metres.");
  LieUnRéglage<&R::raideurBâti>(classe, "frame_stiffness",
                                "Of the frame of the press, newtons per metre.");
  classe
      .def_property_readonly(
          "force", [](const Simulation& s) { return s->presse.Force(); },
          "On the specimen, newtons.")
      .def_property_readonly(
          "position", [](const Simulation& s) { return s->presse.Position(); },
          "Of the piston, metres.")
      .def_property_readonly(
          "shortening", [](const Simulation& s) { return s->presse.Raccourcissement(); },
          "Of the specimen, metres.")
      .def_property_readonly(
          "broken", [](const Simulation& s) { return s->presse.Cassée(); },
          "The specimen is broken.")
      .def_property_readonly(
          "armed", [](const Simulation& s) { return s->presse.Armée(); },
          "Watchdog, emergency button and door all let oil through.")
      .def(
          "new_specimen", [](const Simulation& s) { s->presse.ChangeEprouvette(); },
          "Puts a new specimen in, the platen where it is.")
      .def_property("door_closed", &Contact<&sim::Presse::porteFermée>,
                    &Commute<&sim::Presse::porteFermée>, "The door is closed.")
      .def_property("emergency_button", &Contact<&sim::Presse::boutonAU>,
                    &Commute<&sim::Presse::boutonAU>, "The emergency button is pressed.");
}

}  // namespace

void LieLaSimulation(py::module_& module) {
  py::class_<BorneTenue>(module, "Terminal", "What a channel of the simulated machine is wired to.")
      .def_property_readonly("volts", &BorneTenue::Volts, "Voltage at an analog terminal.")
      .def(
          "hold", [](BorneTenue& b, double volts) { b.Tient(volts, false); }, py::arg("volts"),
          "Keeps an analog input at that voltage, whatever the machine does, until `release`.")
      .def(
          "hold_state", [](BorneTenue& b, bool vrai) { b.Tient(vrai ? 1 : 0, true); },
          py::arg("state"), "Keeps a logic input in that state until `release`.")
      .def("release", &BorneTenue::Lâche, "Leaves the terminal to the machine again.");
  py::class_<Simulation> classe(module, "Simulation", "The simulated machine of a frame.");
  classe.def(py::init([](const std::shared_ptr<Session>& session) { return Simulation{session}; }))
      .def("terminal", &Borne, py::arg("channel"), "The terminal that a channel sits on.")
      .def("fault", &Panne, py::arg("fault"),
           "Plans a fault, KIND[:WHERE][@FROM[-TO]] in seconds after the first pass; without times "
           "it holds from now on. Raises UsageError, with what there is, for any other text.")
      .def(
          "clear_faults", [](const Simulation& s) { s->pannes.clear(); }, "Takes all faults off.")
      .def("_advance", [](const Simulation& s, double secondes) {
        (void)*s;
        s.session->AvanceVite(s.session->Secondes() + secondes);
      });
  LieLaPresse(classe);
}

}  // namespace zuma::python
