#include "sim/machine_bus.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "core/outils_communs.h"
#include "sim/balances_simulees.h"
#include "sim/metro_simule.h"

namespace zuma::sim {
namespace {

using enum ENUM_DRIVER;

constexpr double kPériode = 8;            // seconds
constexpr std::int32_t kCourse = 20'000;  // counts of a ruler around the rest of each magnet
constexpr std::int32_t kEntraxe = 200'000;
constexpr double kPoids = 10;
constexpr double kMillimètres = 5;

bool EstUneRègle(ENUM_DRIVER driver) {
  return driver == DrvRègleMTS1Aimant || driver == DrvRègleMTS3Aimants3 ||
         driver == DrvRègleMTS3Aimants2_1 || driver == DrvRègleMTSMultiMagnet;
}

std::size_t NombreDAimants(const Canal& canal) {
  if (canal.Driver() == DrvRègleMTS1Aimant) return 1;
  if (canal.Driver() == DrvRègleMTSMultiMagnet) return 2;
  return 3;
}

// A serial number that cannot be read gets no ruler: the frame tells it at its start.
bool LitSérie(const std::string& texte, std::uint32_t& série) {
  try {
    série = static_cast<std::uint32_t>(OutilsCommuns::HexaVersLong(texte));
    return true;
  } catch (const Echec&) {
    return false;
  }
}

Ref<BalanceSimulée> BalanceDe(ENUM_DRIVER driver, HorlogeVirtuelle& horloge) {
  if (driver == DrvRS232BalanceLRPC31) return Crée<BalanceLRPC31Simulée>(horloge);
  if (driver == DrvRS232IndicateurDEXAL) return Crée<IndicateurDEXALSimulé>(horloge);
  if (driver == DrvRS232_Balance_JADEVER) return Crée<BalanceJADEVERSimulée>(horloge);
  return {};
}

void PlaceLesAimants(RègleMTSSimulée& règle, double part) {
  for (std::size_t i = 0; i < règle.aimants.size(); ++i) {
    règle.aimants[i] = kEntraxe * static_cast<std::int32_t>(i + 1) +
                       static_cast<std::int32_t>(std::lround(kCourse * part));
  }
}

}  // namespace

// Several channels may read the magnets of one ruler: it is plugged once.
void MachineBus::BrancheRègle(const Fonction& bloc, const Canal& canal) {
  std::uint32_t série = 0;
  if (!LitSérie(canal.NuméroDeSérie(), série)) return;
  const auto même = [&](const RèglePosée& posée) {
    return posée.carte == bloc.Base() && posée.port == bloc.PortCAN() && posée.série == série;
  };
  if (std::ranges::any_of(posées_, même)) return;
  posées_.push_back({bloc.Base(), bloc.PortCAN(), série});
  Pose(bloc.Base(), bloc.PortCAN(),
       Crée<RègleMTSSimulée>(série, std::vector<std::int32_t>(NombreDAimants(canal)), dialogue_));
}

void MachineBus::Pose(std::int32_t carte, std::int32_t port, const Ref<RègleMTSSimulée>& règle) {
  can_.Port(carte, port).Attache(règle);
  PlaceLesAimants(*règle, 0);
  grandeurs_.push_back([règle](double part) { PlaceLesAimants(*règle, part); });
}

void MachineBus::BrancheRègle25(const Canal& canal) {
  std::uint32_t série = 0;
  if (!LitSérie(canal.LaPlateforme().réglages.can.numéroDeSérie, série)) return;
  Pose(canal.Base(), canal.NuméroCanal(),
       Crée<RègleMTSSimulée>(série, std::vector<std::int32_t>(1), dialogue_));
}

void MachineBus::BrancheBalance(const Fonction& bloc, const Canal& canal) {
  const Ref<BalanceSimulée> balance = BalanceDe(canal.Driver(), horloge_);
  if (!balance) return;
  liaisons_.Attache(bloc.LigneSérie().port, balance);
  grandeurs_.push_back([balance](double part) { balance->poids = kPoids * (1 + part); });
}

void MachineBus::BrancheMETRO(const Fonction& bloc, bool multiplexeur) {
  const auto jauges = Crée<METROSimulé>(horloge_, multiplexeur);
  jauges->refuse = true;
  liaisons_.Attache(bloc.LigneSérie().port, jauges);
  for (const CanalRef& canal : bloc.LesCanaux()) {
    const int numéro = canal->NuméroCanal();
    jauges->jauges[numéro] = 0;
    grandeurs_.push_back(
        [jauges, numéro](double part) { jauges->jauges[numéro] = kMillimètres * part; });
  }
}

void MachineBus::Branche(Chassis& chassis) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      dialogue_ = bloc->LaPlateforme().réglages.can.dialogue;
      const ENUM_DRIVER driver = bloc->Driver_enm();
      const bool metro = driver == DrvRS232METRO || driver == DrvRS232METRO_MUX;
      if (metro) BrancheMETRO(*bloc, driver == DrvRS232METRO_MUX);
      for (const CanalRef& canal : *bloc->Canals()) {
        if (driver == drvpci7841) BrancheRègle25(*canal);
        if (EstUneRègle(canal->Driver())) BrancheRègle(*bloc, *canal);
        if (driver == DrvRS232) BrancheBalance(*bloc, *canal);
      }
    }
  }
}

void MachineBus::Anime(double secondes) {
  double phase = 0;
  for (const Grandeur& grandeur : grandeurs_) {
    grandeur(std::sin(2 * std::numbers::pi * (secondes / kPériode + phase)));
    phase += 0.17;
  }
}

}  // namespace zuma::sim
