#include "sim/machine_pci.h"

#include <algorithm>
#include <array>

namespace zuma::sim {
namespace {

using enum ENUM_DRIVER;

// Terminals of each driver: the type of its board, and how many lines it has.
struct Jumeau {
  ENUM_DRIVER driver;
  std::uint16_t type;
  int lignes;
  bool uneSeule = false;  ///< one terminal, whatever the channel's number
};
constexpr std::array<Jumeau, 5> kJumeaux{{
    {drvPCI9111HR_Vorlanex_EL, BibliothèquePCI::kType9111, 20},
    {drvPCI9111HR_Vorlanex_SL, BibliothèquePCI::kType9111, 20},
    {drvPCI9111HR_Vorlanex_EA, BibliothèquePCI::kType9111, 16},
    {drvPCI9111HR_Vorlanex_SA, BibliothèquePCI::kType9111, 1, true},
    {drvPCI6208V_Vorlanex_SA, BibliothèquePCI::kType6208V, 8},
}};

std::uint16_t TypeDe(const Carte& carte) {
  if (carte.Driver_enm() == DrvPCI9111HR) return BibliothèquePCI::kType9111;
  return carte.Driver_enm() == DrvPCI_6208_V ? BibliothèquePCI::kType6208V : std::uint16_t{0};
}

}  // namespace

void MachinePCI::Branche(Chassis& chassis) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    const std::uint16_t type = TypeDe(*carte);
    if (type == 0) continue;
    auto& jumelle = bibliothèque_.Enfiche(type, static_cast<std::uint16_t>(carte->Adresse()));
    enfichées_.push_back({carte.Brut(), &jumelle});
  }
}

std::optional<Borne> MachinePCI::BorneDe(const Canal& canal) const {
  const auto* jumeau = std::ranges::find(kJumeaux, canal.Driver(), &Jumeau::driver);
  if (jumeau == kJumeaux.end() || canal.Parent() == nullptr) return {};
  const auto enfichée = std::ranges::find(enfichées_, canal.Parent()->Parent(), &Enfichée::carte);
  if (enfichée == enfichées_.end() || enfichée->jumelle->type != jumeau->type) return {};
  const int ligne = jumeau->uneSeule ? 0 : canal.NuméroCanal();
  if (ligne < 0 || ligne >= jumeau->lignes) return {};
  return Borne(enfichée->jumelle->bornes, static_cast<std::uint8_t>(ligne), false);
}

}  // namespace zuma::sim
