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

// Which twin answers to which driver, where, and how its lines reach the channels.
struct Jumeau {
  ENUM_DRIVER driver;
  Fabrique fabrique;
  PlaceDuJumeau place{};
};
constexpr std::array<Jumeau, 22> kJumeaux{{
    {.driver = DrvPCL731_PCLD782B, .fabrique = &Sans<CartePCL731>, .place = {.ports = 8}},
    {.driver = DrvPCL731_PCLD7225,
     .fabrique = &Sans<CartePCL731>,
     .place = {.ports = 8, .inversé = true}},
    {.driver = DrvPET48DIO_TB24P,
     .fabrique = &Sans<CartePET48>,
     .place = {.ports = 2, .parRang = ParRang::EnBloc}},
    {.driver = DrvPET48DIO_TB24R, .fabrique = &Sans<CartePET48>, .place = {.ports = 2}},
    {.driver = DrvPET48DIO_PCLD782B,
     .fabrique = &Sans<CartePET48>,
     .place = {.ports = 2, .parRang = ParRang::EnBloc, .inversé = true}},
    {.driver = DrvPET48DIO_PCLD7225,
     .fabrique = &Sans<CartePET48>,
     .place = {.ports = 2, .inversé = true}},
    {.driver = DrvACL8316_ACLD9182,
     .fabrique = &AvecHorloge<CarteACL8316>,
     .place = {.parRang = ParRang::Toujours}},
    {.driver = DrvACL8316_ACLD9185, .fabrique = &AvecHorloge<CarteACL8316>},
    {.driver = DrvACL8316_ACLD8125,
     .fabrique = &AvecHorloge<CarteACL8316>,
     .place = {.parRang = ParRang::EnBloc}},
    {.driver = DrvACL8316, .fabrique = &AvecHorloge<CarteACL8316>},
    {.driver = DrvA826PG_DB16B,
     .fabrique = &AvecHorloge<CarteA826>,
     .place = {.parRang = ParRang::Toujours}},
    {.driver = DrvA826PG_DB16R, .fabrique = &AvecHorloge<CarteA826>},
    {.driver = DrvA826PG_DB8225, .fabrique = &AvecHorloge<CarteA826>},
    {.driver = DrvA826PG, .fabrique = &AvecHorloge<CarteA826>},
    {.driver = DrvACL6126_ACLD9182,
     .fabrique = &Paires<6, true>,
     .place = {.parRang = ParRang::Toujours}},
    {.driver = DrvACL6126_ACLD9185, .fabrique = &Paires<6, true>},
    {.driver = DrvACL6126, .fabrique = &Paires<6, true>},
    {.driver = DrvPCL813_PCLD881, .fabrique = &AvecHorloge<CarteEntrées12Bits>},
    {.driver = DrvACL8113, .fabrique = &AvecHorloge<CarteEntrées12Bits>},
    {.driver = DrvPCL728, .fabrique = &Paires<8, false>},
    {.driver = DrvACL6128, .fabrique = &Paires<8, false>},
    {.driver = DrvIK121, .fabrique = &Codeurs, .place = {.masque = 0xFF0, .première = 1}},
}};

const Jumeau* DeLaTable(const LigneDriver& ligne) {
  const auto* jumeau = std::ranges::find(kJumeaux, ligne.valeur, &Jumeau::driver);
  return jumeau == kJumeaux.end() ? nullptr : jumeau;
}

// Place of a driver's twin; none for a driver without a port-mapped one.
const PlaceDuJumeau* PlaceDe(const LigneDriver& ligne) {
  if (ligne.jumeau != nullptr) return &ligne.jumeau->place;
  const Jumeau* jumeau = DeLaTable(ligne);
  return jumeau == nullptr ? nullptr : &jumeau->place;
}

// A twin that a row brought along, among the others.
class CarteDUnDriver : public CarteSimulée {
 public:
  CarteDUnDriver(HorlogeVirtuelle& horloge, std::unique_ptr<JumeauDeCarte> jumeau)
      : horloge_(horloge), jumeau_(std::move(jumeau)) {}
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override {
    return jumeau_->Lit(décalage, Autour());
  }
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override {
    jumeau_->Ecrit(décalage, octet, Autour());
  }

 private:
  AutourDuJumeau Autour() {
    return {bornes, pannes.Vues(bornes.entréesLogiques), pannes.bloquée, horloge_.Maintenant()};
  }

  HorlogeVirtuelle& horloge_;
  std::unique_ptr<JumeauDeCarte> jumeau_;
};

std::unique_ptr<CarteSimulée> CréeLaCarte(const LigneDriver& ligne, HorlogeVirtuelle& horloge,
                                          const Réglages& réglages) {
  if (ligne.jumeau == nullptr) return DeLaTable(ligne)->fabrique(horloge, réglages);
  return std::make_unique<CarteDUnDriver>(horloge, ligne.jumeau->crée());
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

std::uint16_t BaseDe(const PlaceDuJumeau& place, std::uint16_t base) {
  return static_cast<std::uint16_t>(base & place.masque);
}

int LigneDe(const Canal& canal, const PlaceDuJumeau& place) {
  const bool enBloc = canal.Parent() != nullptr && canal.Parent()->MAJParFonction();
  const bool parRang =
      place.parRang == ParRang::Toujours || (place.parRang == ParRang::EnBloc && enBloc);
  return parRang ? RangDe(canal) : canal.NuméroCanal() - place.première;
}

}  // namespace

CarteSimulée* MachinePorts::Trouve(std::uint16_t base) const {
  const auto carte = std::ranges::find(cartes_, base, &Enfichée::base);
  return carte == cartes_.end() ? nullptr : carte->carte.get();
}

void MachinePorts::Branche(Chassis& chassis) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      const LigneDriver& ligne = bloc->LeDriver();
      const PlaceDuJumeau* place = PlaceDe(ligne);
      if (place == nullptr) continue;
      const std::uint16_t base = BaseDe(*place, bloc->Base());
      if (Trouve(base) != nullptr) continue;
      cartes_.push_back({base, CréeLaCarte(ligne, horloge_, bloc->LaPlateforme().réglages)});
      bus_.Attache(base, place->ports, *cartes_.back().carte);
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
  const PlaceDuJumeau* place = PlaceDe(canal.LeDriver());
  CarteSimulée* carte = place == nullptr ? nullptr : Trouve(BaseDe(*place, canal.Base()));
  if (carte == nullptr) return {};
  const int ligne = LigneDe(canal, *place);
  if (ligne < 0 || ligne >= kLignesParCarte) return {};
  return Borne(carte->bornes, static_cast<std::uint8_t>(ligne), place->inversé);
}

}  // namespace zuma::sim
