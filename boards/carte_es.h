#pragma once

#include <cstdint>

#include "base/echec.h"
#include "tree/ligne_driver.h"
#include "tree/materiel.h"

namespace zuma {

/// What the port-mapped boards have in common: registers at offsets from a base address, and
/// blind waits. No port operation reports a failure: an absent board reads as whatever the bus
/// gives.
class CarteES : public Pilote {
 public:
  /// The board at `base`; its services come from `matériel`.
  CarteES(const Matériel& matériel, std::uint16_t base) : matériel_(matériel), base_(base) {}

 protected:
  ///@{
  /// Reads the register at that offset: a byte, or a word.
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) const {
    return matériel_.plateforme.ports->Inp(Port(décalage));
  }
  [[nodiscard]] std::uint16_t LitMot(std::uint16_t décalage) const {
    return matériel_.plateforme.ports->Inpw(Port(décalage));
  }
  ///@}
  /// Two bytes of an unsigned word, each at its own offset.
  [[nodiscard]] std::uint16_t LitPaire(std::uint16_t bas, std::uint16_t haut) const;
  ///@{
  /// Writes the register at that offset: a byte, or a word.
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) {
    matériel_.plateforme.ports->Outp(Port(décalage), octet);
  }
  void EcritMot(std::uint16_t décalage, std::uint16_t mot) {
    matériel_.plateforme.ports->Outpw(Port(décalage), mot);
  }
  ///@}
  /// A word as two bytes: the low one at `décalage`, then the high one behind it.
  void EcritPaire(std::uint16_t décalage, std::uint16_t mot);

  /// Busy wait on the frame's timer, in microseconds.
  void Attend(double microsecondes) const;

  /// Port of the register at that offset.
  [[nodiscard]] std::uint16_t Port(std::uint16_t décalage) const noexcept {
    return static_cast<std::uint16_t>(base_ + décalage);
  }
  /// What the board was made from.
  [[nodiscard]] const Matériel& LeMatériel() const noexcept { return matériel_; }

 private:
  Matériel matériel_;
  std::uint16_t base_;
};

/// Weight of a word that counts as it is.
[[nodiscard]] constexpr std::uint32_t MotEntier(std::uint32_t mot) noexcept {
  return mot;
}

/// How the logic inputs of a board reach the channels of a block. Each board that has some states
/// its rules as `kEntrées`, those that it does not name by these defaults; a misspelt one does not
/// compile.
struct RèglesDEntrées {
  bool bitParNuméro = false;      ///< a channel takes the bit of its number, not of its rank
  bool parCanalPossible = false;  ///< the same where the block is set channel by channel
  bool peutRefuser = false;       ///< reads may fail: the board has `LignesLues`
  /// What the change test compares of a word; all of it by default.
  std::uint32_t (*poids)(std::uint32_t mot) = &MotEntier;
};

/// Signed value of a 12-bit code: 0 to 2047 are positive, 2048 to 4095 negative (two's complement).
/// A code beyond is brought down as far.
[[nodiscard]] constexpr int Signé12Bits(int code) noexcept {
  constexpr int kPremierNégatif = 2048;
  constexpr int kCodes = 4096;
  return code >= kPremierNégatif ? code - kCodes : code;
}

/// True for a channel of 0 to `nombre` - 1.
[[nodiscard]] constexpr bool EstUneVoie(std::int16_t voie, std::int16_t nombre) noexcept {
  return voie >= 0 && voie < nombre;
}

/// Fails with 9 on a channel out of 0 to `nombre` - 1, with a text that tells both.
void ExigeVoie(std::int16_t voie, std::int16_t nombre);

/// Bits of a word of logic lines.
inline constexpr std::int16_t kBitsDuMot = 32;

/// Bit of a channel in a word of logic lines; a channel out of 0 to 31 fails with 9.
[[nodiscard]] std::uint32_t Masque(std::int16_t voie);

/// `image` with the bit of `voie` set or cleared.
[[nodiscard]] std::uint32_t AvecBit(std::uint32_t image, std::int16_t voie, bool actif);

/// Offset of an analog output: one word a channel. A channel out of 0 to `nombre` - 1 fails with 9,
/// so that no other register of the board is written.
[[nodiscard]] std::uint16_t DécalageSortie(std::int16_t voie, std::int16_t nombre);

}  // namespace zuma
