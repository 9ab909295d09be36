#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// PCL 731: two programmable interfaces of 24 logic lines, each with a connector of its own. Inputs
/// are the lines of the first, at offsets 0 to 2 with its control at 3; outputs are those of the
/// second, at 4 to 6 with its control at 7, and rest at 1.
class PCL_731 : public CarteES {
 public:
  /// Lines of each interface.
  static constexpr std::int16_t kLignes = 24;

  /// The board at a base address.
  using CarteES::CarteES;

  /// How its inputs reach the channels.
  static constexpr RèglesDEntrées kEntrées{.bitParNuméro = true};
  /// Sets the first interface up to read; with `avecSorties` the second one to drive its lines.
  void DémarreEntrées(bool avecSorties);
  /// All lines but the last in one read, one a bit.
  [[nodiscard]] std::uint32_t LitEntrées();
  /// A set bit is the false level; there is no line from 24 on, which reads true.
  [[nodiscard]] bool LitEntrée(std::int16_t voie);

  /// Outputs to rest. The first interface too, unless contacts are wired to it.
  void DémarreSorties(bool avecEntrées);
  /// Whole word: the control byte goes out with the data, so that a board that was reset drives its
  /// lines again.
  void EcritSorties(std::uint32_t image);
  /// One line, the others as they read back.
  void EcritSortie(std::int16_t voie, bool active);
};

}  // namespace zuma
