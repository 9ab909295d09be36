#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// A 826 PG: 16 analog inputs of 16 bits at a fixed gain, 2 analog outputs, 16 logic inputs and
/// outputs.
class A_826PG : public CarteES {
 public:
  static constexpr double kPleineEchelle = 32768;
  static constexpr std::int16_t kVoies = 16;
  static constexpr std::int16_t kLignes = 16;

  using CarteES::CarteES;

  void DémarreAnalogique(bool scan);
  /// One conversion at the gain code given, in signed counts.
  [[nodiscard]] double LitAnalogique(std::int16_t voie, std::int16_t& gain);

  void DémarreSortiesAnalogiques() {}
  void EcritAnalogique(std::int16_t voie, std::int16_t valeur);

  static constexpr RèglesDEntrées kEntrées{};
  void DémarreEntrées() {}
  [[nodiscard]] std::uint32_t LitEntrées() const { return LitMot(6); }
  /// A set bit is the true level.
  [[nodiscard]] bool LitEntrée(std::int16_t voie) const { return (LitMot(6) & Masque(voie)) != 0; }

  void DémarreSorties() { EcritSorties(0); }
  void EcritSorties(std::uint32_t image);
  void EcritSortie(std::int16_t voie, bool active) {
    EcritSorties(AvecBit(imageSorties_, voie, active));
  }

 private:
  std::uint32_t imageSorties_ = 0;
};

}  // namespace zuma
