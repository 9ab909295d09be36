#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// A 826 PG: 16 analog inputs of 16 bits at a fixed gain, 2 analog outputs, 16 logic inputs and
/// outputs.
class A_826PG : public CarteES {
 public:
  /// Counts at the upper end of the range.
  static constexpr double kPleineEchelle = 32768;
  /// Analog inputs.
  static constexpr std::int16_t kVoies = 16;
  /// Logic inputs, and as many outputs.
  static constexpr std::int16_t kLignes = 16;

  /// The board at a base address.
  using CarteES::CarteES;

  /// Prepares conversions; `scan` is for a block that is read as a whole.
  void DémarreAnalogique(bool scan);
  /// One conversion at the gain code given, in signed counts.
  [[nodiscard]] double LitAnalogique(std::int16_t voie, std::int16_t& gain);

  /// Nothing to prepare.
  void DémarreSortiesAnalogiques() {}
  /// Writes the code of an output, 0 or 1; another one fails with 9.
  void EcritAnalogique(std::int16_t voie, std::int16_t valeur);

  /// How its inputs reach the channels.
  static constexpr RèglesDEntrées kEntrées{};
  /// Nothing to prepare.
  void DémarreEntrées() {}
  /// The 16 lines, one a bit.
  [[nodiscard]] std::uint32_t LitEntrées() const { return LitMot(6); }
  /// A set bit is the true level.
  [[nodiscard]] bool LitEntrée(std::int16_t voie) const { return (LitMot(6) & Masque(voie)) != 0; }

  /// All outputs to rest.
  void DémarreSorties() { EcritSorties(0); }
  /// Writes the 16 lines, one a bit.
  void EcritSorties(std::uint32_t image);
  /// Sets one line, the others as they were written last.
  void EcritSortie(std::int16_t voie, bool active) {
    EcritSorties(AvecBit(imageSorties_, voie, active));
  }

 private:
  std::uint32_t imageSorties_ = 0;
};

}  // namespace zuma
