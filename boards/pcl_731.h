#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// PCL 731: 24 logic lines on a programmable interface at offsets 0 to 2 with its control at 3,
/// and a second one at 4 to 7. Outputs rest at 1.
class PCL_731 : public CarteES {
 public:
  static constexpr std::int16_t kLignes = 24;

  using CarteES::CarteES;

  /// A block takes the bit of a channel's number, and until a line has moved all count as clear.
  static constexpr bool kBitParNuméro = true;
  static constexpr bool kPremierMotCompte = false;
  void DémarreEntrées(bool avecSorties);
  [[nodiscard]] std::uint32_t LitEntrées();
  /// A set bit is the false level; there is no line from 24 on, which reads true.
  [[nodiscard]] bool LitEntrée(std::int16_t voie);

  void DémarreSorties();
  /// Whole word, to the second interface: its control byte goes out with the data.
  void EcritSorties(std::uint32_t image);
  /// One line of the first interface, the others as they read back.
  void EcritSortie(std::int16_t voie, bool active);
};

}  // namespace zuma
