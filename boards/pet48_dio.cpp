#include "boards/pet48_dio.h"

namespace zuma {
namespace {

constexpr std::uint16_t kDonnée = 1;
constexpr std::uint8_t kPremièreEntrée = 0;
constexpr std::uint8_t kCommandeEntrées = 3;
constexpr std::uint8_t kPremièreSortie = 4;
constexpr std::uint8_t kCommandeSorties = 7;
constexpr std::uint8_t kToutEnEntrée = 0x9B;
constexpr std::uint8_t kToutEnSortie = 0x80;
constexpr std::uint8_t kPorts = 3;

}  // namespace

void PET48_DIO::DémarreCarte(bool avecSorties) {
  Sélectionne(kCommandeEntrées);
  Ecrit(kDonnée, kToutEnEntrée);
  if (!avecSorties) return;
  Sélectionne(kCommandeSorties);
  Ecrit(kDonnée, kToutEnSortie);
}

std::uint32_t PET48_DIO::LitVingtQuatre() {
  std::uint32_t mot = 0;
  for (std::uint8_t port = 0; port < kPorts; ++port) {
    Sélectionne(static_cast<std::uint8_t>(kPremièreEntrée + port));
    mot |= std::uint32_t{Lit(kDonnée)} << (8U * port);
  }
  return mot;
}

void PET48_DIO::EcritVingtQuatre(std::uint32_t mot) {
  for (std::uint8_t port = 0; port < kPorts; ++port) {
    Sélectionne(static_cast<std::uint8_t>(kPremièreSortie + port));
    Ecrit(kDonnée, static_cast<std::uint8_t>(mot >> (8U * port) & 0xFFU));
  }
}

}  // namespace zuma
