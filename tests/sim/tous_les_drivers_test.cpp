// Every driver of the table at work on the demo frames: inputs move, outputs reach their terminals.
#include <optional>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "boards/table_des_drivers.h"
#include "outils/dossier_provisoire.h"
#include "outils/temoins.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/demo.h"
#include "sim/machine_simulee.h"

namespace zuma {
namespace {

using enum ENUM_TYPE_FONCTION;

/// The blinking inputs of the demo ask for stops, which would hide what the outputs do.
class SansArrêt : public ZED_Securite {
 public:
  void PositionneCauseAU(std::string_view) override {}
  Valeur DéclencheSécurité() override { return Nul{}; }
};

/// One frame on its twins, and the drivers seen at work.
class UnChassis {
 public:
  UnChassis(const Ref<linux_::BaseSqlite>& base, std::int32_t index) {
    chassis.TimerExact(machine.horloge);
    chassis.ChargeErreur(registre);
    chassis.ChargeLeChassis(base, index);
    chassis.Lien(base, std::to_string(index), Crée<SansArrêt>());
    chassis.MiseàJourDesLiens();
    machine.Branche(chassis);
    chassis.Initialise();
    for (const CarteRef& carte : *chassis.Cartes()) {
      for (const FonctionRef& bloc : *carte->Fonctions()) {
        for (const CanalRef& canal : *bloc->Canals()) {
          if (canal->NuméroCanal() >= 0) suivis.push_back({carte, bloc, canal});
        }
      }
    }
  }

  std::set<ENUM_DRIVER> Montre() {
    constexpr int kPasses = 1200;
    for (int passe = 1; passe <= kPasses; ++passe) {
      machine.AvanceJusquA(0.005 * passe);
      chassis.MetàJour();
      // The amplifier and the first conditioner are left to the host.
      for (const CarteRef& carte : *chassis.Cartes()) {
        if (carte->Service() == ServiceCarte::ParFonction && !EstParBlocs(*carte)) {
          carte->MetàJour();
        }
      }
      if (passe == kPasses / 3) EcritLesSorties();
      for (Suivi& suivi : suivis) Regarde(suivi);
    }
    if (machine.ChienDeGarde() != nullptr && machine.ChienDeGarde()->ContactFermé()) {
      montrés.insert(ENUM_DRIVER::DrvWDT01);
    }
    return montrés;
  }

  Ref<essai::Registre> registre = Crée<essai::Registre>();

 private:
  struct Suivi {
    CarteRef carte;
    FonctionRef bloc;
    CanalRef canal;
    std::optional<double> premier{};
  };

  static bool EstParBlocs(const Carte& carte) {
    const LigneDriver& ligne = carte.LeDriver();
    return ligne.carte == nullptr || ligne.carte->rafraîchit == nullptr;
  }
  void Note(const Suivi& suivi) {
    montrés.insert({suivi.carte->Driver_enm(), suivi.bloc->Driver_enm(), suivi.canal->Driver()});
  }
  void Regarde(Suivi& suivi) {
    const ENUM_TYPE_FONCTION type = suivi.bloc->TypeDeFonction();
    if (type != FctEntréesLogiques && type != FctEntréesAnalogiques) return;
    const double valeur = suivi.canal->ValeurCanal();
    if (suivi.premier && *suivi.premier != valeur) Note(suivi);
    if (!suivi.premier) suivi.premier = valeur;
  }
  // What an output does is seen at its terminal, where it has one.
  void EcritLesSorties() {
    for (const Suivi& suivi : suivis) {
      const bool logique = suivi.bloc->TypeDeFonction() == FctSortiesLogiques;
      const auto borne = machine.BorneDe(*suivi.canal);
      if (!borne || (!logique && suivi.bloc->TypeDeFonction() != FctSortiesAnalogiques)) continue;
      const auto lue = [&] { return logique ? borne->SortieLogique() : borne->TensionSortie(); };
      const double avant = lue();
      suivi.canal->ValeurCanal(logique ? kVrai : 1000);
      suivi.bloc->MetàJour();
      if (lue() != avant) Note(suivi);
    }
  }

  essai::Messages messages;
  sim::MachineSimulée machine{messages, CréeLesDrivers()};
  Chassis chassis{machine.services};
  std::vector<Suivi> suivis;
  std::set<ENUM_DRIVER> montrés;
};

TEST(TousLesDrivers, LisentOuEcriventSurLeurJumeau) {
  const essai::DossierProvisoire dossier;
  linux_::CréeBase(dossier.Fichier("demo.db"), linux_::LignesDeDémonstration());
  const auto base = Crée<linux_::BaseSqlite>(dossier.Fichier("demo.db"));
  std::set<ENUM_DRIVER> montrés;
  for (const std::int32_t index : {linux_::kChassisDeDémonstration, linux_::kChassisDesBus,
                                   linux_::kChassisDesAppareils, linux_::kChassisPCI}) {
    UnChassis chassis(base, index);
    montrés.merge(chassis.Montre());
    for (const auto& entrée : chassis.registre->entrées) {
      ADD_FAILURE() << "frame " << index << ": " << entrée.message;
    }
  }
  int rangées = 0;
  for (const LigneDriver& ligne : DriversDeZuma()) {
    ++rangées;
    EXPECT_TRUE(montrés.contains(ligne.valeur)) << ligne.nom;
  }
  EXPECT_EQ(rangées, 55);
}

}  // namespace
}  // namespace zuma
