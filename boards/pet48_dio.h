#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// PET 48 DIO: 24 logic inputs and 24 outputs behind a select port and a data port.
class PET48_DIO : public CarteES {
 public:
  /// Logic inputs, and as many outputs.
  static constexpr std::int16_t kLignes = 24;

  /// The board at a base address.
  using CarteES::CarteES;

  /// Sets the interfaces up: inputs on the first, outputs on the second. The second is left alone
  /// on a board without outputs: it would pull every line down.
  void DémarreCarte(bool avecSorties);
  /// Reads the lines once, for nobody.
  void DémarreEntrées() { (void)LitVingtQuatre(); }

 protected:
  /// The 24 input lines as they stand.
  [[nodiscard]] std::uint32_t LitVingtQuatre();
  /// Writes the 24 output lines as they are to stand.
  void EcritVingtQuatre(std::uint32_t mot);

 private:
  void Sélectionne(std::uint8_t port) { Ecrit(0, port); }
};

/// The board with one of its two wirings: the terminal boards of the one carry the lines as they
/// stand, those of the other invert them.
template <bool kInversé>
class PET48_Câblé : public PET48_DIO {
 public:
  using PET48_DIO::PET48_DIO;

  /// How its inputs reach the channels.
  static constexpr RèglesDEntrées kEntrées{.parCanalPossible = true};
  /// The 24 lines, one a bit, set where the input is true.
  [[nodiscard]] std::uint32_t LitEntrées() { return Câblé(LitVingtQuatre()); }
  /// One line.
  [[nodiscard]] bool LitEntrée(std::int16_t voie) { return (LitEntrées() & Masque(voie)) != 0; }

  /// All outputs to rest.
  void DémarreSorties() { EcritSorties(0); }
  /// Writes the 24 lines, one a bit, set where the output is active.
  void EcritSorties(std::uint32_t image) {
    imageSorties_ = image;
    EcritVingtQuatre(Câblé(image));
  }
  /// Sets one line, the others as they were written last.
  void EcritSortie(std::int16_t voie, bool active) {
    EcritSorties(AvecBit(imageSorties_, voie, active));
  }

 private:
  static constexpr std::uint32_t kMasque = 0xFFFFFF;
  [[nodiscard]] static std::uint32_t Câblé(std::uint32_t mot) {
    return (kInversé ? ~mot : mot) & kMasque;
  }

  std::uint32_t imageSorties_ = 0;
};

/// The wiring whose terminal boards carry the lines as they stand.
using PET48_TB24 = PET48_Câblé<false>;
/// The wiring whose terminal boards invert the lines.
using PET48_PCLD = PET48_Câblé<true>;

}  // namespace zuma
