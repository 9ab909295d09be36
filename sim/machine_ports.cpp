#include "sim/machine_ports.h"

#include <algorithm>
#include <array>

#include "sim/carte_acl8316.h"
#include "sim/carte_ik121.h"
#include "sim/cartes_simples.h"

namespace zuma::sim {
namespace {

using enum ENUM_DRIVER;
using Fabrique = std::unique_ptr<CarteSimulée> (*)(HorlogeVirtuelle&, const Réglages&);

template <class Board>
std::unique_ptr<CarteSimulée> AvecHorloge(HorlogeVirtuelle& horloge, const Réglages&) {
  return std::make_unique<Board>(horloge);
}
template <class Board>
std::unique_ptr<CarteSimulée> Sans(HorlogeVirtuelle&, const Réglages&) {
  return std::make_unique<Board>();
}
template <unsigned kVoies, bool kLogique>
std::unique_ptr<CarteSimulée> Paires(HorlogeVirtuelle&, const Réglages&) {
  return std::make_unique<CarteSortiesParPaires>(kVoies, kLogique);
}
std::unique_ptr<CarteSimulée> Codeurs(HorlogeVirtuelle&, const Réglages& réglages) {
  return std::make_unique<CarteIK121>(réglages.ik121);
}

// Whether a channel sits on the line of its rank in the block rather than of its number.
enum class ParRang : std::uint8_t { Jamais, Toujours, EnBloc };

// Which twin answers to which driver, on how many ports, and how its lines reach the channels.
struct Jumeau {
  ENUM_DRIVER driver;
  Fabrique fabrique;
  std::uint16_t ports = 16;
  ParRang parRang = ParRang::Jamais;
  bool inversé = false;
  std::uint16_t masque = 0xFFFF;  ///< bits of the address that count
  int première = 0;               ///< number of the channel on the first line
};
constexpr std::array<Jumeau, 22> kJumeaux{{
    {.driver = DrvPCL731_PCLD782B, .fabrique = &Sans<CartePCL731>, .ports = 8},
    {.driver = DrvPCL731_PCLD7225, .fabrique = &Sans<CartePCL731>, .ports = 8, .inversé = true},
    {.driver = DrvPET48DIO_TB24P,
     .fabrique = &Sans<CartePET48>,
     .ports = 2,
     .parRang = ParRang::EnBloc},
    {.driver = DrvPET48DIO_TB24R, .fabrique = &Sans<CartePET48>, .ports = 2},
    {.driver = DrvPET48DIO_PCLD782B,
     .fabrique = &Sans<CartePET48>,
     .ports = 2,
     .parRang = ParRang::EnBloc,
     .inversé = true},
    {.driver = DrvPET48DIO_PCLD7225, .fabrique = &Sans<CartePET48>, .ports = 2, .inversé = true},
    {.driver = DrvACL8316_ACLD9182,
     .fabrique = &AvecHorloge<CarteACL8316>,
     .parRang = ParRang::Toujours},
    {.driver = DrvACL8316_ACLD9185, .fabrique = &AvecHorloge<CarteACL8316>},
    {.driver = DrvACL8316_ACLD8125,
     .fabrique = &AvecHorloge<CarteACL8316>,
     .parRang = ParRang::EnBloc},
    {.driver = DrvACL8316, .fabrique = &AvecHorloge<CarteACL8316>},
    {.driver = DrvA826PG_DB16B, .fabrique = &AvecHorloge<CarteA826>, .parRang = ParRang::Toujours},
    {.driver = DrvA826PG_DB16R, .fabrique = &AvecHorloge<CarteA826>},
    {.driver = DrvA826PG_DB8225, .fabrique = &AvecHorloge<CarteA826>},
    {.driver = DrvA826PG, .fabrique = &AvecHorloge<CarteA826>},
    {.driver = DrvACL6126_ACLD9182, .fabrique = &Paires<6, true>, .parRang = ParRang::Toujours},
    {.driver = DrvACL6126_ACLD9185, .fabrique = &Paires<6, true>},
    {.driver = DrvACL6126, .fabrique = &Paires<6, true>},
    {.driver = DrvPCL813_PCLD881, .fabrique = &AvecHorloge<CarteEntrées12Bits>},
    {.driver = DrvACL8113, .fabrique = &AvecHorloge<CarteEntrées12Bits>},
    {.driver = DrvPCL728, .fabrique = &Paires<8, false>},
    {.driver = DrvACL6128, .fabrique = &Paires<8, false>},
    {.driver = DrvIK121, .fabrique = &Codeurs, .masque = 0xFF0, .première = 1},
}};

const Jumeau* JumeauDe(ENUM_DRIVER driver) {
  const auto* jumeau = std::ranges::find(kJumeaux, driver, &Jumeau::driver);
  return jumeau == kJumeaux.end() ? nullptr : jumeau;
}

// Place of a channel in its block; -1 for a channel that stands in none.
int RangDe(const Canal& canal) {
  if (canal.Parent() == nullptr) return -1;
  int rang = 0;
  for (const CanalRef& autre : canal.Parent()->LesCanaux()) {
    if (autre.Brut() == &canal) return rang;
    ++rang;
  }
  return -1;
}

std::uint16_t BaseDe(const Jumeau& jumeau, std::uint16_t base) {
  return static_cast<std::uint16_t>(base & jumeau.masque);
}

int LigneDe(const Canal& canal, const Jumeau& jumeau) {
  const bool enBloc = canal.Parent() != nullptr && canal.Parent()->MAJParFonction();
  const bool parRang =
      jumeau.parRang == ParRang::Toujours || (jumeau.parRang == ParRang::EnBloc && enBloc);
  return parRang ? RangDe(canal) : canal.NuméroCanal() - jumeau.première;
}

}  // namespace

CarteSimulée* MachinePorts::Trouve(std::uint16_t base) const {
  const auto carte = std::ranges::find(cartes_, base, &Enfichée::base);
  return carte == cartes_.end() ? nullptr : carte->carte.get();
}

void MachinePorts::Branche(Chassis& chassis) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      const Jumeau* jumeau = JumeauDe(bloc->Driver_enm());
      if (jumeau == nullptr) continue;
      const std::uint16_t base = BaseDe(*jumeau, bloc->Base());
      if (Trouve(base) != nullptr) continue;
      cartes_.push_back({base, jumeau->fabrique(horloge_, bloc->LaPlateforme().réglages)});
      bus_.Attache(base, jumeau->ports, *cartes_.back().carte);
    }
  }
  const auto adresse = static_cast<std::uint16_t>(chassis.Watchdog()->Adresse());
  if (adresse == 0 || watchdog_) return;
  watchdog_ = std::make_unique<CarteWDT01>(horloge_);
  adresseDuWatchdog_ = adresse;
  bus_.Attache(adresse, CarteWDT01::kPorts, *watchdog_);
}

template <class Travail>
void MachinePorts::PourChaque(Travail&& travail) {
  for (const Enfichée& enfichée : cartes_) travail(enfichée.base, enfichée.carte->pannes);
  if (watchdog_) travail(adresseDuWatchdog_, watchdog_->pannes);
}

void MachinePorts::Graine(std::uint32_t graine) {
  PourChaque(
      [&](std::uint16_t base, PannesDeCarte& pannes) { pannes.hasard = Hasard::De(graine, base); });
}

void MachinePorts::Applique(std::span<const PannePrévue> pannes, double secondes) {
  PourChaque([&](std::uint16_t base, PannesDeCarte& carte) {
    sim::Applique(
        pannes, secondes, [&](const PannePrévue& panne) { return panne.FrappeLaCarte(base); },
        carte);
  });
}

std::optional<Borne> MachinePorts::BorneDe(const Canal& canal) const {
  const Jumeau* jumeau = JumeauDe(canal.Driver());
  CarteSimulée* carte = jumeau == nullptr ? nullptr : Trouve(BaseDe(*jumeau, canal.Base()));
  if (carte == nullptr) return {};
  const int ligne = LigneDe(canal, *jumeau);
  if (ligne < 0 || ligne >= kLignesParCarte) return {};
  return Borne(carte->bornes, static_cast<std::uint8_t>(ligne), jumeau->inversé);
}

}  // namespace zuma::sim
