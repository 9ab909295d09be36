#include "sim/machine_instruments.h"

#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "platform/reglages_port.h"
#include "sim/balance_gram_simulee.h"
#include "sim/conditionneur_simule.h"
#include "sim/laser_simule.h"
#include "sim/testeur_cbr_simule.h"

namespace zuma::sim {
namespace {

constexpr double kPériode = 8;       // seconds
constexpr double kEntreDeux = 0.17;  // turns between the phases of two quantities

/// Which boards have a twin on a serial line, and what plugs it.
struct Jumeau {
  ENUM_DRIVER driver;
  void (*branche)(MachineInstruments& machine, const Carte& carte);
};

void BrancheLaser(MachineInstruments& machine, const Carte& carte) {
  constexpr double kEtendue = 20'000;  // counts
  const auto laser = Crée<LaserSimulé>(machine.LHorloge());
  machine.Pose(carte, laser, [laser](double place) { laser->extension = kEtendue * place; });
}

// At rest its load cell shows a little; it pushes when it is started.
void BrancheTesteurCBR(MachineInstruments& machine, const Carte& carte) {
  const auto testeur = Crée<TesteurCBRSimulé>(machine.LHorloge());
  machine.Pose(carte, testeur, [testeur](double place) { testeur->précharge = 0.05 * place; });
}

void BrancheBalanceGram(MachineInstruments& machine, const Carte& carte) {
  const auto balance = Crée<BalanceGramSimulée>(machine.LHorloge());
  machine.Pose(carte, balance, [balance](double place) { balance->poids = 500 * (1 + place); });
}

// Three values of unlike size, so that a channel taken for another shows.
void BrancheConditionneur(MachineInstruments& machine, const Carte& carte) {
  const auto appareil =
      Crée<ConditionneurSimulé>(machine.LHorloge(), static_cast<std::uint8_t>(carte.Adresse()));
  machine.Pose(carte, appareil, [appareil](double place) {
    appareil->valeurs = {20'000 * place, 5'000 * place, -1'000 * place};
  });
}

constexpr std::array kJumeaux{
    Jumeau{ENUM_DRIVER::Drv_EIR_LASER, &BrancheLaser},
    Jumeau{ENUM_DRIVER::Drv_UTS_0107, &BrancheTesteurCBR},
    Jumeau{ENUM_DRIVER::Drv_Balance_GRAM, &BrancheBalanceGram},
    Jumeau{ENUM_DRIVER::DrvConditionneurNumeriqueK9, &BrancheConditionneur},
    Jumeau{ENUM_DRIVER::DrvConditionneurNumeriqueK9_V1_00, &BrancheConditionneur},
};

}  // namespace

void MachineInstruments::Branche(Chassis& chassis) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const Jumeau& jumeau : kJumeaux) {
      if (jumeau.driver == carte->Driver_enm()) jumeau.branche(*this, *carte);
    }
  }
}

void MachineInstruments::Pose(const Carte& carte, Ref<AppareilSérie> appareil, Grandeur grandeur) {
  const std::int32_t port = LitRéglages(carte.Configuration()).NuméroPort();
  liaisons_.Attache(port, std::move(appareil));
  grandeurs_.push_back(std::move(grandeur));
}

void MachineInstruments::Anime(double secondes) {
  double phase = 0;
  for (const Grandeur& grandeur : grandeurs_) {
    grandeur(std::sin(2 * std::numbers::pi * (secondes / kPériode + phase)));
    phase += kEntreDeux;
  }
}

}  // namespace zuma::sim
