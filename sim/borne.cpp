#include "sim/borne.h"

namespace zuma::sim {

void Borne::EntréeLogique(bool vraie) {
  const std::uint32_t masque = 1U << ligne_;
  std::uint32_t& lignes = bornes_->entréesLogiques;
  lignes = vraie != inversée_ ? lignes | masque : lignes & ~masque;
}

bool Borne::SortieLogique() const {
  return ((bornes_->sortiesLogiques >> ligne_ & 1U) != 0) != inversée_;
}

}  // namespace zuma::sim
