#pragma once

#include <cstdint>
#include <optional>

#include "boards/carte_pci.h"

namespace zuma {

/// PCI 9111 HR behind a Vorlanex break-out: 16 analog inputs of 16 bits with five gains, one analog
/// output of 12 bits, and logic lines each way, 16 on port 0 and 4 more on port 1.
class PCI_9111_HR : public CartePCI {
 public:
  /// Counts of gain code 1 at the upper end of the range.
  static constexpr double kPleineEchelle = 32768;
  /// Analog inputs.
  static constexpr std::int16_t kVoies = 16;
  /// Logic lines that the board has each way.
  static constexpr std::int16_t kLignesDesPorts = 20;
  /// A write takes every line that a word has: those that the board lacks are for the library to
  /// refuse.
  static constexpr std::int16_t kLignes = kBitsDuMot;

  /// The board of a handle.
  using CartePCI::CartePCI;

  /// Prepares conversions that are started by the program.
  void DémarreAnalogique(bool scan);
  /// Mean of so many conversions with automatic range, in signed counts of gain code 1; 0 counts as
  /// one conversion. `gain` is brought to 1 to 5 first. NaN when the library refused one of them.
  [[nodiscard]] double LitAnalogique(std::int16_t voie, std::int16_t& gain,
                                     std::int16_t lectures = 1);

  /// Nothing to prepare.
  void DémarreSortiesAnalogiques() {}
  /// Codes 0 to 2047 are positive, 2048 to 4095 negative (two's complement on 12 bits). The board
  /// has one output: the channel's number is not used. True when the library took it.
  bool EcritAnalogique(std::int16_t voie, std::int16_t valeur);

  /// How its inputs reach the channels.
  static constexpr RèglesDEntrées kEntrées{.bitParNuméro = true, .peutRefuser = true};
  /// Nothing to prepare.
  void DémarreEntrées() {}
  /// The 20 lines, one a bit; `EntréesLues` tells whether they are of now.
  [[nodiscard]] std::uint32_t LitEntrées();
  /// A set line is the true level.
  [[nodiscard]] bool LitEntrée(std::int16_t voie);
  /// Lines that the last read of inputs gave; those that the library refused are none.
  [[nodiscard]] std::uint32_t LignesLues() const noexcept { return lues_; }

  /// All lines to 0, whatever was written before.
  void DémarreSorties();
  void OublieSesEcritures() override { imageSorties_.reset(); }
  /// Whole word; one that the board already holds is skipped. True when the board holds it.
  bool EcritSorties(std::uint32_t image);
  /// True when the library took it.
  bool EcritSortie(std::int16_t voie, bool active);

 private:
  /// Word that the logic outputs hold, while that is certain: none after a start, at a stop, after
  /// the write of a single line or after a write that failed. The next word then goes out whatever
  /// it is: a stop must not be taken for a word already there that did not arrive, or that a card
  /// which was reset has lost.
  std::optional<std::uint32_t> imageSorties_;
  std::uint32_t lues_ = 0;
};

}  // namespace zuma
