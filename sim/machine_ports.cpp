#include "sim/machine_ports.h"

#include <algorithm>
#include <array>

#include "sim/carte_acl8316.h"
#include "sim/cartes_simples.h"

namespace zuma::sim {
namespace {

using enum ENUM_DRIVER;
using Fabrique = std::unique_ptr<CarteSimulée> (*)(HorlogeVirtuelle&);

template <class Board>
std::unique_ptr<CarteSimulée> AvecHorloge(HorlogeVirtuelle& horloge) {
  return std::make_unique<Board>(horloge);
}
template <class Board>
std::unique_ptr<CarteSimulée> Sans(HorlogeVirtuelle&) {
  return std::make_unique<Board>();
}
template <unsigned kVoies, bool kLogique>
std::unique_ptr<CarteSimulée> Paires(HorlogeVirtuelle&) {
  return std::make_unique<CarteSortiesParPaires>(kVoies, kLogique);
}

// Which twin answers to which driver.
struct Jumeau {
  ENUM_DRIVER driver;
  Fabrique fabrique;
};
constexpr std::array<Jumeau, 21> kJumeaux{{
    {DrvPCL731_PCLD782B, &Sans<CartePCL731>},
    {DrvPCL731_PCLD7225, &Sans<CartePCL731>},
    {DrvPET48DIO_TB24P, &Sans<CartePET48>},
    {DrvPET48DIO_TB24R, &Sans<CartePET48>},
    {DrvPET48DIO_PCLD782B, &Sans<CartePET48>},
    {DrvPET48DIO_PCLD7225, &Sans<CartePET48>},
    {DrvACL8316_ACLD9182, &AvecHorloge<CarteACL8316>},
    {DrvACL8316_ACLD9185, &AvecHorloge<CarteACL8316>},
    {DrvACL8316_ACLD8125, &AvecHorloge<CarteACL8316>},
    {DrvACL8316, &AvecHorloge<CarteACL8316>},
    {DrvA826PG_DB16B, &AvecHorloge<CarteA826>},
    {DrvA826PG_DB16R, &AvecHorloge<CarteA826>},
    {DrvA826PG_DB8225, &AvecHorloge<CarteA826>},
    {DrvA826PG, &AvecHorloge<CarteA826>},
    {DrvACL6126_ACLD9182, &Paires<6, true>},
    {DrvACL6126_ACLD9185, &Paires<6, true>},
    {DrvACL6126, &Paires<6, true>},
    {DrvPCL813_PCLD881, &AvecHorloge<CarteEntrées12Bits>},
    {DrvACL8113, &AvecHorloge<CarteEntrées12Bits>},
    {DrvPCL728, &Paires<8, false>},
    {DrvACL6128, &Paires<8, false>},
}};

constexpr std::uint16_t kPortsParCarte = 16;

const Jumeau* JumeauDe(ENUM_DRIVER driver) {
  const auto* jumeau = std::ranges::find(kJumeaux, driver, &Jumeau::driver);
  return jumeau == kJumeaux.end() ? nullptr : jumeau;
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
      if (jumeau == nullptr || Trouve(bloc->Base()) != nullptr) continue;
      cartes_.push_back({bloc->Base(), jumeau->fabrique(horloge_)});
      bus_.Attache(bloc->Base(), kPortsParCarte, *cartes_.back().carte);
    }
  }
  const auto adresse = static_cast<std::uint16_t>(chassis.Watchdog()->Adresse());
  if (adresse == 0 || watchdog_) return;
  watchdog_ = std::make_unique<CarteWDT01>(horloge_);
  bus_.Attache(adresse, CarteWDT01::kPorts, *watchdog_);
}

Bornes* MachinePorts::BornesDe(const Canal& canal) const {
  if (JumeauDe(canal.Driver()) == nullptr) return nullptr;
  CarteSimulée* carte = Trouve(canal.Base());
  return carte == nullptr ? nullptr : &carte->bornes;
}

}  // namespace zuma::sim
