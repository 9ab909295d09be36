#pragma once

#include <cstdint>

#include "boards/sorties_par_paires.h"

namespace zuma {

/// ACL 6126: 6 analog outputs, 16 logic inputs and outputs.
class ACL_6126 : public SortiesParPaires<6> {
 public:
  /// Logic inputs, and as many outputs.
  static constexpr std::int16_t kLignes = 16;

  using SortiesParPaires::SortiesParPaires;

  /// The change test weighs the high byte by 255 where the read weighs it by 256, and must: hosts
  /// rely on which changes are seen at once.
  [[nodiscard]] static constexpr std::uint32_t Poids(std::uint32_t mot) {
    return (mot >> 8U) * 255U + (mot & 0xFFU);
  }
  /// How its inputs reach the channels.
  static constexpr RèglesDEntrées kEntrées{.poids = &Poids};
  /// Nothing to prepare.
  void DémarreEntrées() {}
  /// The 16 lines, one a bit.
  [[nodiscard]] std::uint32_t LitEntrées() const { return LitPaire(0x0E, 0x0F); }
  /// A set bit is the true level.
  [[nodiscard]] bool LitEntrée(std::int16_t voie) const {
    return (LitEntrées() & Masque(voie)) != 0;
  }

  /// All outputs to rest.
  void DémarreSorties() { EcritSorties(0); }
  /// Writes the 16 lines, one a bit.
  void EcritSorties(std::uint32_t image) {
    imageSorties_ = image;
    EcritPaire(0x0C, static_cast<std::uint16_t>(image & 0xFFFFU));
  }
  /// Sets one line, the others as they were written last.
  void EcritSortie(std::int16_t voie, bool active) {
    EcritSorties(AvecBit(imageSorties_, voie, active));
  }

 private:
  std::uint32_t imageSorties_ = 0;
};

}  // namespace zuma
