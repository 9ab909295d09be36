#include "sim/machine_bus.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <string>

#include "base/outils_communs.h"
#include "platform/reglages_port.h"
#include "sim/balances_simulees.h"
#include "sim/metro_simule.h"
#include "sim/variateur_simule.h"

namespace zuma::sim {
namespace {

using enum ENUM_DRIVER;

constexpr double kPériode = 8;            // seconds
constexpr std::int32_t kCourse = 20'000;  // counts of a ruler around the rest of each magnet
constexpr std::int32_t kEntraxe = 200'000;
constexpr double kEcart = 0.1;  // part of the travel that the next magnet has more
constexpr double kPoids = 10;
constexpr double kMillimètres = 5;
constexpr double kRegistre = 1000;  // Modbus measures move between 0 and twice that
constexpr double kCharge = 20;      // of the USB drive

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

// Each magnet goes a little further than the one before, so that their distances move too.
void PlaceLesAimants(RègleMTSSimulée& règle, double part) {
  for (std::size_t i = 0; i < règle.aimants.size(); ++i) {
    const double course = kCourse * part * (1 + kEcart * static_cast<double>(i));
    règle.aimants[i] = kEntraxe * static_cast<std::int32_t>(i + 1) +
                       static_cast<std::int32_t>(std::lround(course));
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

// Bits for the functions that read bits, words for those that read words; what is written makes
// its own registers.
void MachineBus::PoseLesRegistres(const Fonction& bloc, const Ref<EsclaveModbus>& esclave) {
  const std::int32_t fonction = bloc.ModbusFonction();
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (canal->NuméroCanal() < 0) continue;
    const auto adresse =
        static_cast<std::uint16_t>(bloc.ModbusRegistreDeDepart() + canal->NuméroCanal());
    if (fonction == 1 || fonction == 2) {
      esclave->bits[adresse] = false;
      grandeurs_.push_back([esclave, adresse](double part) { esclave->bits[adresse] = part > 0; });
    } else if (fonction == 3 || fonction == 4) {
      esclave->registres[adresse] = 0;
      grandeurs_.push_back([esclave, adresse](double part) {
        esclave->registres[adresse] =
            static_cast<std::uint16_t>(std::lround(kRegistre * (1 + part)));
      });
    }
  }
}

// One line a board; a drive keeps its registers itself.
void MachineBus::BrancheModbus(Carte& carte) {
  const auto bus = Crée<BusModbus>(horloge_);
  // A drive's ramp may stand behind the settings of the line: the port alone counts here.
  RéglagesInstrument port;
  port.port = carte.Configuration().substr(0, carte.Configuration().find(','));
  liaisons_.Attache(port.NuméroPort(), bus);
  std::map<std::uint8_t, Ref<EsclaveModbus>> esclaves;
  RegistresDeVariateur places;
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    const auto premier = static_cast<std::uint16_t>(bloc->ModbusRegistreDeDepart());
    if (bloc->TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques) {
      places.consigne = premier;
    }
    if (bloc->TypeDeFonction() == ENUM_TYPE_FONCTION::FctEntréesLogiques) places.état = premier;
  }
  const bool variateur = carte.Driver_enm() == Drv_VarioLS_K9_Modbus;
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    const auto adresse = static_cast<std::uint8_t>(bloc->ModbusAdresse());
    Ref<EsclaveModbus>& esclave = esclaves[adresse];
    if (!esclave && variateur) esclave = Crée<VariateurSimulé>(horloge_, adresse, places);
    if (!esclave) esclave = Crée<EsclaveModbus>(horloge_, adresse);
    if (!variateur) PoseLesRegistres(*bloc, esclave);
  }
  for (const auto& [adresse, esclave] : esclaves) bus->Attache(adresse, esclave);
}

void MachineBus::BrancheCanaux(const Fonction& bloc) {
  const ENUM_DRIVER driver = bloc.Driver_enm();
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (driver == drvpci7841) BrancheRègle25(*canal);
    if (EstUneRègle(canal->Driver())) BrancheRègle(bloc, *canal);
    if (driver == DrvRS232) BrancheBalance(bloc, *canal);
  }
}

void MachineBus::Branche(Chassis& chassis) {
  grandeurs_.push_back([this](double part) { thumler_.charge = kCharge * (1 + part); });
  for (const CarteRef& carte : *chassis.Cartes()) {
    const ENUM_DRIVER driverDeCarte = carte->Driver_enm();
    if (driverDeCarte == DrvModBus || driverDeCarte == Drv_UMV4301_Modbus ||
        driverDeCarte == Drv_VarioLS_K9_Modbus) {
      BrancheModbus(*carte);
    }
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      dialogue_ = bloc->LaPlateforme().réglages.can.dialogue;
      const ENUM_DRIVER driver = bloc->Driver_enm();
      const bool metro = driver == DrvRS232METRO || driver == DrvRS232METRO_MUX;
      (void)bloc->Canals();  // made on first access
      if (metro) BrancheMETRO(*bloc, driver == DrvRS232METRO_MUX);
      BrancheCanaux(*bloc);
    }
  }
}

// Bits on CAN and USB are guarded by their links: what garbles them is noticed there as silence.
void MachineBus::Applique(std::span<const PannePrévue> pannes, double secondes) {
  const auto usb = [&](GenreDePanne genre) {
    return Frappe(pannes, secondes, genre,
                  [](const PannePrévue& panne) { return panne.lieu == LieuDePanne::USB; });
  };
  const auto can = [&](GenreDePanne genre) {
    return Frappe(pannes, secondes, genre, [](const PannePrévue& panne) {
      return panne.lieu == LieuDePanne::CAN || panne.lieu == LieuDePanne::Partout;
    });
  };
  can_.absente = can(GenreDePanne::Débranchement);
  can_.muette = can(GenreDePanne::Silence);
  can_.Pannes({.sourde = can(GenreDePanne::Surdité),
               .tardive = can(GenreDePanne::Retard),
               .figée = can(GenreDePanne::Figement)});
  thumler_.branché = !usb(GenreDePanne::Débranchement);
  thumler_.muet = usb(GenreDePanne::Silence);
  thumler_.sourd = usb(GenreDePanne::Surdité);
  thumler_.figé = usb(GenreDePanne::Figement);
}

void MachineBus::MetEnMarche(std::span<const PannePrévue> pannes) {
  const bool frappé =
      Frappe(pannes, kAvantLeDépart, GenreDePanne::EnMarche, [](const PannePrévue& panne) {
        return panne.lieu == LieuDePanne::USB || panne.lieu == LieuDePanne::Partout;
      });
  if (frappé) thumler_.MetEnMarche();
}

void MachineBus::Anime(double secondes) {
  double phase = 0;
  for (const Grandeur& grandeur : grandeurs_) {
    grandeur(std::sin(2 * std::numbers::pi * (secondes / kPériode + phase)));
    phase += 0.17;
  }
}

}  // namespace zuma::sim
