#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "bench/lignes.h"
#include "boards/table_des_drivers.h"
#include "host/chassis_en_marche.h"
#include "host/machine.h"
#include "outils/dossier_provisoire.h"
#include "outils/fenetres_d_essai.h"
#include "sim/machine_simulee.h"

namespace zuma::arret {

using banc::Lignes;

/// The output of a row in the frame: a command, or a logic output.
struct Objet {
  CommandeRef commande;
  SortieLogiqueRef sortie;
  [[nodiscard]] CanalRef Canal() const { return commande ? commande->Canal() : sortie->Canal(); }
};

/// The simulated machine with ears: whatever sleeps lets events be served, as a host's clock may,
/// and who reads the time may be looked at meanwhile.
class MachineÀLEcoute : public host::Machine, public Horloge {
 public:
  explicit MachineÀLEcoute(BoîteDeMessage& messages) : sim(messages, CréeLesDrivers()) {
    sim.services.horloge = this;
    sim.services.fenêtres = &fenêtres;
  }
  std::string TexteHeure() const override { return sim.horloge->TexteHeure(); }
  void Dort(double secondes) override {
    if (auto événement = std::exchange(pendantUnSommeil, nullptr)) événement();
    sim.horloge->Dort(secondes);
  }
  Plateforme& Services() override { return sim.services; }
  Ref<ZED_Timer> Timer() override { return minuterie_; }
  void Branche(Chassis& chassis) override {
    sim.Branche(chassis);
    if (avantLeDépart) avantLeDépart();
  }
  double AvanceJusquA(double secondes) override { return sim.AvanceJusquA(secondes); }
  std::string_view Fini() const override { return sim.fin.raison; }
  void AvantLaFin(const std::function<void()>& geste) override { avantLaFin = geste; }
  sim::MachineSimulée* Jumelle() override { return &sim; }

  sim::MachineSimulée sim;
  essai::FenêtresDEssai fenêtres;
  std::function<void()> avantLaFin;        ///< what a real process does before it is gone
  std::function<void()> avantLeDépart;     ///< the twins are plugged, the boards not started
  std::function<void()> pendantUnSommeil;  ///< called once, in the next sleep of the library
  std::function<void()> àChaqueLecture;    ///< called at each read of the time, in passes too

 private:
  struct Minuterie : ZED_Timer {
    explicit Minuterie(MachineÀLEcoute& m) : machine(m) {}
    double LitMicrosecondes() override {
      const double maintenant = machine.sim.horloge->LitMicrosecondes();
      if (machine.àChaqueLecture) machine.àChaqueLecture();
      return maintenant;
    }
    MachineÀLEcoute& machine;
  };
  Ref<Minuterie> minuterie_ = Crée<Minuterie>(*this);
};

/// A frame made of rows, running on the machine under the program's own host.
class Montage {
 public:
  static constexpr std::string_view kSujet = "Essai";  ///< name of the output under trial

  /// The rows that every frame of the proof begins with.
  [[nodiscard]] static Lignes Départ();

  explicit Montage(const Lignes& lignes, const std::function<void(Montage&)>& avantLeDépart = {});

  /// From now on a stop is one call of `Chassis.DéclencheAU`.
  void Dénude();
  /// One pass, `pas` seconds after the one before.
  void Passe(double pas);
  /// The guard door, and the input that somebody listens to.
  EntréeLogique& Porte() { return **marche->LeChassis().EntréesLogiques()->begin(); }
  EntréeLogique& Ecouteur() { return **std::next(marche->LeChassis().EntréesLogiques()->begin()); }
  /// Seconds on the frame's timer.
  [[nodiscard]] double Maintenant() const { return machine.sim.horloge->Maintenant() / 1e6; }
  /// Seconds after the start, as faults are planned.
  [[nodiscard]] double DepuisLeDépart() const { return secondes_; }
  [[nodiscard]] Objet LObjet();
  /// The host tells that the output of that name was not reached.
  [[nodiscard]] bool EstDite(std::string_view nom);

 private:
  void FixeLesEntrées();

  essai::DossierProvisoire dossier_;
  bool nu_ = false;
  double secondes_ = 0;

 public:
  bool ouverte = false;  ///< the door
  bool levé = false;     ///< the input that is listened to
  Ref<host::Recueil> recueil = Crée<host::Recueil>();
  MachineÀLEcoute machine{*recueil};
  std::optional<host::ChassisEnMarche> marche;
};

}  // namespace zuma::arret
