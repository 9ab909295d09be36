#pragma once

#include <array>
#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// ACL 8316: 16 analog inputs of 16 bits with four gains and a hardware scan, 2 analog outputs of
/// 12 bits, a frequency output, 16 logic inputs and outputs.
class ACL_8316 : public CarteES {
 public:
  /// Counts of gain 1 at the upper end of the range.
  static constexpr double kPleineEchelle = 32768;
  /// Analog inputs.
  static constexpr std::int16_t kVoies = 16;
  /// Logic inputs, and as many outputs.
  static constexpr std::int16_t kLignes = 16;
  /// One sum a channel; a block may have more channels than the board.
  using Sommes = std::array<double, 32>;

  /// The board at a base address.
  using CarteES::CarteES;

  /// Counter stopped and multiplexer at rest; for a scan the whole start sequence.
  void DémarreAnalogique(bool scan);
  /// One conversion with automatic range, in signed counts of gain 1.
  [[nodiscard]] double LitAnalogique(std::int16_t voie, std::int16_t& gain);
  /// Adds `lectures` scans of the 16 channels to the sums, then rearms the scan.
  void LitScan(int lectures, Sommes& sommes);

  /// Both outputs to 0.
  void DémarreSortiesAnalogiques();
  /// Codes 0 to 2047 are positive, 2048 to 4095 negative (two's complement on 12 bits). A code
  /// that leaves 16 bits once brought to the register's upper bits fails with 6.
  void EcritAnalogique(std::int16_t voie, std::int16_t valeur);
  /// Square wave of that frequency in hertz on counter 0; 0 or less, or a divisor of the clock
  /// out of 1 to 65535, stops it.
  void ProgrammeFréquence(double hertz);
  /// Stops the square wave.
  void ArrêteFréquence();

  /// How its inputs reach the channels.
  static constexpr RèglesDEntrées kEntrées{};
  /// Nothing to prepare.
  void DémarreEntrées() {}
  /// The 16 lines, one a bit.
  [[nodiscard]] std::uint32_t LitEntrées() const { return LitMot(14); }
  /// A set bit is the false level.
  [[nodiscard]] bool LitEntrée(std::int16_t voie) const { return (LitMot(14) & Masque(voie)) == 0; }

  /// All outputs to rest.
  void DémarreSorties() { EcritSorties(0); }
  /// Writes the 16 lines, one a bit.
  void EcritSorties(std::uint32_t image);
  /// Sets one line, the others as they were written last.
  void EcritSortie(std::int16_t voie, bool active) {
    EcritSorties(AvecBit(imageSorties_, voie, active));
  }

 private:
  [[nodiscard]] double Convertit(std::int16_t voie, std::int16_t gain);

  std::uint32_t imageSorties_ = 0;
};

}  // namespace zuma
