#include "boards/pci_6208_v.h"

#include <string>

#include "boards/operations.h"
#include "tree/carte.h"

namespace zuma {
namespace {

constexpr std::int16_t kSortiesRemisesAZéro = 6;

}  // namespace

void PCI_6208_V::DémarreSortiesAnalogiques() {
  for (std::int16_t voie = 0; voie < kSortiesRemisesAZéro; ++voie) EcritAnalogique(voie, 0);
}

bool PCI_6208_V::EcritAnalogique(std::int16_t voie, std::int16_t valeur) {
  return Lib().AO_WriteChannel(Poignée(), static_cast<std::uint16_t>(voie), valeur) == 0;
}

namespace pilotes {
namespace {

void DémarreCarte6208(Carte& carte) {
  const std::int16_t réponse = EnregistreCartePCI(carte, BibliothèquePCI::kType6208V);
  if (réponse < 0) carte.Montre("Init 6208V error : " + std::to_string(réponse));
}

}  // namespace

const OpérationsCarte kPCI6208VCarte{.démarre = &DémarreCarte6208};

}  // namespace pilotes
}  // namespace zuma
