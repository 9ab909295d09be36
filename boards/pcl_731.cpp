#include "boards/pcl_731.h"

namespace zuma {
namespace {

constexpr std::uint16_t kCommande = 3;
constexpr std::uint16_t kSecondeInterface = 4;
constexpr std::uint8_t kToutEnEntrée = 0x9B;
constexpr std::uint8_t kToutEnSortie = 0x80;
constexpr std::uint32_t kMotLu = 0x7FFFFF;       // line 23 is not read by the block
constexpr std::uint32_t kMotEcrit = 0x80FFFFFF;  // data and the control of the interface
constexpr int kPorts = 3;

}  // namespace

// The pairs at 0 and 1 are kept as the boards in service are started. The mode byte of each read
// and write is what counts; it comes first here, so that the pairs never reach the lines.
void PCL_731::DémarreEntrées(bool avecSorties) {
  Ecrit(kCommande, kToutEnEntrée);
  Ecrit(0, 3);
  Ecrit(1, kToutEnEntrée);
  if (!avecSorties) return;
  Ecrit(0, 7);
  Ecrit(1, kToutEnSortie);
}

std::uint32_t PCL_731::LitEntrées() {
  Ecrit(kCommande, kToutEnEntrée);
  return LeMatériel().plateforme.ports->Inpd(Port(0)) & kMotLu;
}

bool PCL_731::LitEntrée(std::int16_t voie) {
  if (voie >= kLignes) return true;
  Ecrit(kCommande, kToutEnEntrée);
  const std::uint32_t masque = Masque(static_cast<std::int16_t>(voie % 8));
  return (Lit(static_cast<std::uint16_t>(voie / 8)) & masque) == 0;
}

// An output of the first interface would work against the contact that is wired to its line.
void PCL_731::DémarreSorties(bool avecEntrées) {
  if (!avecEntrées) {
    Ecrit(kCommande, kToutEnSortie);
    for (std::uint16_t port = 0; port < kPorts; ++port) Ecrit(port, 0xFF);
  }
  EcritSorties(0);
}

void PCL_731::EcritSorties(std::uint32_t image) {
  LeMatériel().plateforme.ports->Outpd(Port(kSecondeInterface), ~image & kMotEcrit);
}

// On the interface of the whole word: beside an input block the first one drives nothing, and a
// number must be the same terminal whoever writes it, so that a stop reaches it.
void PCL_731::EcritSortie(std::int16_t voie, bool active) {
  const auto port = static_cast<std::uint16_t>(kSecondeInterface + voie / 8);
  const std::uint32_t lu = Lit(port);
  Ecrit(port, static_cast<std::uint8_t>(AvecBit(lu, static_cast<std::int16_t>(voie % 8), !active) &
                                        0xFFU));
}

}  // namespace zuma
