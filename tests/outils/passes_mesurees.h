#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "boards/table_des_drivers.h"
#include "outils/dossier_provisoire.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/demo.h"
#include "sim/machine_simulee.h"
#include "tree/retenues.h"

// How long each driver of the table holds a pass on its twins.
namespace zuma::essai {

/// One driver on one board of the demonstration, with nothing else on its frame. Microseconds of
/// the simulated clock: settling delays and waits count, the processor and the transfers of
/// libraries and lines do not.
struct PasseMesurée {
  ENUM_DRIVER driver;
  std::int32_t canaux;  ///< that the driver serves there
  double saine;         ///< longest pass, the device well
  double muette;        ///< longest pass of one that falls silent, or was so from the start
  double arrêt;         ///< longest share of a stop, silent
  double annoncée;      ///< what the library states of a silent one
};

namespace passes {

constexpr int kPasses = 120;
constexpr double kPériode = 0.005;  // seconds
constexpr double kMarche = 100;     // a set point

/// A port bus whose boards hang: no status ever says ready.
class PortsFigés : public PortsES {
 public:
  std::uint8_t Inp(std::uint16_t) override { return 0; }
  std::uint16_t Inpw(std::uint16_t) override { return 0; }
  std::uint32_t Inpd(std::uint16_t) override { return 0; }
  void Outp(std::uint16_t, std::uint8_t) override {}
  void Outpw(std::uint16_t, std::uint16_t) override {}
  void Outpd(std::uint16_t, std::uint32_t) override {}
};

/// Failures are expected of a silent device, and tell nothing here.
class Sourds : public ZED_Erreur, public BoîteDeMessage {
 public:
  void AjouteErreur(std::string_view, const TableVariables&) override {}
  void Montre(std::string_view, const ObjetConcerné&) override {}
};

/// A frame of the demonstration with one board, and on it what one driver serves.
class Seul {
 public:
  enum class Silence { Jamais, EnRoute, DèsLeDépart };

  Seul(const Ref<BaseDeDonnées>& base, std::int32_t index, const std::string& carte,
       ENUM_DRIVER driver, Silence silence)
      : silence_(silence) {
    chassis_.TimerExact(machine_.horloge);
    chassis_.ChargeErreur(sourds_);
    chassis_.ChargeLeChassis(base, index);
    chassis_.Capteurs({}), chassis_.Commandes({}), chassis_.EntréesLogiques({});
    if (driver != ENUM_DRIVER::DrvWDT01) chassis_.Watchdog({});
    for (const CarteRef& c : *chassis_.Cartes()) {
      if (c->Key() == carte) Réduit(*c, driver);
      if (c->Key() != carte) chassis_.Cartes()->Remove(c->Key());
    }
    machine_.Branche(chassis_);
    if (silence == Silence::DèsLeDépart) FaitTaire();
    chassis_.Initialise();
    chassis_.Watchdog()->Enabled(true);
  }

  // A hung watchdog board would be awaited at its end.
  ~Seul() { machine_.services.ports = &machine_.ports.Bus(); }

  /// Longest of the passes, microseconds.
  double Passes() {
    double maxi = 0;
    for (int n = 1; n <= kPasses; ++n) {
      if (n == kPasses / 4) Commande(kVrai, kMarche);
      if (n == kPasses / 2 && silence_ == Silence::EnRoute) FaitTaire();
      if (n == kPasses * 3 / 4) Commande(0, 0);
      machine_.AvanceJusquA(n * kPériode);
      maxi = std::max(maxi, Durée([&] { Passe(); }));
    }
    return maxi;
  }
  /// What the board costs a stop that comes as its device falls silent.
  double Arrêt() {
    Commande(kVrai, kMarche);
    for (int n = 1; n <= kPasses / 4; ++n) {
      machine_.AvanceJusquA((kPasses + n) * kPériode);
      chassis_.MetàJour();
    }
    FaitTaire();
    Commande(0, 0);
    return Durée([&] {
      for (const CarteRef& c : *chassis_.Cartes()) c->MetàJour();
    });
  }
  [[nodiscard]] double Annoncée() {
    double secondes = 0;
    for (const CarteRef& c : *chassis_.Cartes()) secondes += RetenueDUnePasse(*c);
    return secondes * 1e6;
  }
  [[nodiscard]] std::int32_t Canaux() {
    std::int32_t nombre = 0;
    ChaqueCanal([&](Canal&) { ++nombre; });
    return nombre;
  }

 private:
  template <class Travail>
  double Durée(Travail&& travail) {
    const double avant = machine_.horloge->Maintenant();
    travail();
    return machine_.horloge->Maintenant() - avant;
  }
  // What the pass leaves to the host is served behind it.
  void Passe() {
    chassis_.MetàJour();
    for (const CarteRef& c : *chassis_.Cartes()) {
      const OpérationsCarte* carte = c->LeDriver().carte;
      const bool sert = carte != nullptr && carte->rafraîchit != nullptr;
      if (sert && c->Service() == ServiceCarte::ParFonction) c->MetàJour();
    }
  }
  static void Réduit(Carte& carte, ENUM_DRIVER driver) {
    if (carte.Driver_enm() == driver) return;
    for (const FonctionRef& bloc : *carte.Fonctions()) {
      if (bloc->Driver_enm() == driver) continue;
      for (const CanalRef& canal : *bloc->Canals()) {
        if (canal->Driver() != driver) bloc->Canals()->Remove(canal->Key());
      }
      if (bloc->Canals()->Count() == 0) carte.Fonctions()->Remove(bloc->Key());
    }
  }
  template <class Geste>
  void ChaqueCanal(Geste&& geste) {
    for (const CarteRef& c : *chassis_.Cartes()) {
      for (const FonctionRef& bloc : *c->Fonctions()) {
        for (const CanalRef& canal : *bloc->Canals()) geste(*canal);
      }
    }
  }
  // What the outputs ask for leaves by itself on the links that the pass serves.
  void Commande(double logique, double analogique) {
    ChaqueCanal([&](Canal& canal) {
      const ENUM_TYPE_FONCTION type = canal.TypeCanal();
      if (canal.NuméroCanal() < 0) return;
      if (type == ENUM_TYPE_FONCTION::FctSortiesLogiques) canal.ValeurCanal(logique);
      if (type == ENUM_TYPE_FONCTION::FctSortiesAnalogiques) canal.ValeurCanal(analogique);
    });
  }
  void FaitTaire() {
    machine_.services.ports = &figés_;
    machine_.bus.Can().muette = true;
    machine_.bus.Thumler().muet = true;
    machine_.réseaux.Spider().muet = true;
    for (std::int32_t port = 1; port <= 100; ++port) {
      if (sim::LigneSérie* ligne = machine_.liaisons.Ligne(port)) ligne->pannes.muette = true;
    }
    ChaqueCanal([&](Canal& canal) {
      if (canal.Driver() != ENUM_DRIVER::DrvLvdtSolartron) return;
      machine_.réseaux.Orbit().Débranche(canal.NuméroDeSérie());
    });
  }

  Silence silence_;
  Ref<Sourds> sourds_ = Crée<Sourds>();
  PortsFigés figés_;
  sim::MachineSimulée machine_{*sourds_, CréeLesDrivers()};
  Chassis chassis_{machine_.services};
};

inline PasseMesurée Mesure(const Ref<BaseDeDonnées>& base, std::int32_t index,
                           const std::string& carte, ENUM_DRIVER driver) {
  using enum Seul::Silence;
  Seul saine(base, index, carte, driver, Jamais);
  Seul muette(base, index, carte, driver, EnRoute);
  // The watchdog board is required at its start, and gauges are awaited there for seconds.
  constexpr std::array kExigés{ENUM_DRIVER::DrvWDT01, ENUM_DRIVER::DrvRS232METRO,
                               ENUM_DRIVER::DrvRS232METRO_MUX};
  const bool exigée = std::ranges::find(kExigés, driver) != kExigés.end();
  Seul jamaisVue(base, index, carte, driver, exigée ? EnRoute : DèsLeDépart);
  return {.driver = driver,
          .canaux = saine.Canaux(),
          .saine = saine.Passes(),
          .muette = std::max(muette.Passes(), jamaisVue.Passes()),
          .arrêt = saine.Arrêt(),
          .annoncée = saine.Annoncée()};
}

inline std::set<ENUM_DRIVER> DriversDe(Carte& carte) {
  std::set<ENUM_DRIVER> drivers{carte.Driver_enm()};
  for (const FonctionRef& bloc : *carte.Fonctions()) {
    drivers.insert(bloc->Driver_enm());
    for (const CanalRef& canal : *bloc->Canals()) drivers.insert(canal->Driver());
  }
  drivers.erase(ENUM_DRIVER::DrvAucun);
  return drivers;
}

}  // namespace passes

/// Every driver of the table, in its order, on the first board that has it.
inline std::vector<PasseMesurée> MesureLesPasses() {
  const DossierProvisoire dossier;
  const std::string fichier = dossier.Fichier("demo.db");
  linux_::CréeBase(fichier, linux_::LignesDeDémonstration());
  const auto base = Crée<linux_::BaseSqlite>(fichier);
  std::vector<PasseMesurée> mesures{
      passes::Mesure(base, linux_::kChassisDeDémonstration, "", ENUM_DRIVER::DrvWDT01)};
  for (const std::int32_t index : {linux_::kChassisDeDémonstration, linux_::kChassisDesBus,
                                   linux_::kChassisDesAppareils, linux_::kChassisPCI}) {
    const auto sourds = Crée<passes::Sourds>();
    sim::MachineSimulée machine(*sourds, CréeLesDrivers());
    Chassis chassis(machine.services);
    chassis.ChargeErreur(sourds);
    chassis.TimerExact(machine.horloge);
    chassis.ChargeLeChassis(base, index);
    for (const CarteRef& carte : *chassis.Cartes()) {
      for (const ENUM_DRIVER driver : passes::DriversDe(*carte)) {
        if (std::ranges::find(mesures, driver, &PasseMesurée::driver) != mesures.end()) continue;
        mesures.push_back(passes::Mesure(base, index, carte->Key(), driver));
      }
    }
  }
  std::ranges::sort(mesures, {}, &PasseMesurée::driver);
  return mesures;
}

}  // namespace zuma::essai
