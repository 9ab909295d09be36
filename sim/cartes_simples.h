#pragma once

#include <optional>

#include "sim/bornes.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// 32 inputs of 12 bits, 0 to 10 V: the ACL 8113 and the PCL 813 B. A conversion takes its time,
/// and reading the high nibble freezes the low byte.
class CarteEntrées12Bits : public CarteSimulée {
 public:
  /// A board whose conversions take their time by that clock.
  explicit CarteEntrées12Bits(HorlogeVirtuelle& horloge) : horloge_(horloge) {}
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override;
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;

  double conversion = 30;  ///< microseconds

 private:
  HorlogeVirtuelle& horloge_;
  unsigned gain_ = 0;
  unsigned voie_ = 0;
  double départ_ = 0;
  int code_ = 0;
  int ancien_ = 0;
  std::uint8_t basFigé_ = 0;
};

/// Analog outputs of 12 bits, 0 to 10 V, by byte pairs: the high byte takes the pair over. Logic
/// lines behind them where the board has some. The ACL 6128, the PCL 728 and the ACL 6126.
class CarteSortiesParPaires : public CarteSimulée {
 public:
  /// `voies` outputs; `logique` adds the logic lines of the ACL 6126.
  explicit CarteSortiesParPaires(unsigned voies, bool logique = false)
      : voies_(voies), logique_(logique) {}
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override;
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;

 private:
  unsigned voies_;
  bool logique_;
  std::uint8_t bas_ = 0;
};

/// Three ports of eight lines and their mode byte. A true chip, set to a mode, drops its output
/// latches to 0; boards that copy it with plain logic keep them.
class Interface8255 {
 public:
  /// True for a chip, false for a copy.
  explicit Interface8255(bool perdSesVerrous) : perdSesVerrous_(perdSesVerrous) {}
  /// A register, 0 to 3; `entrées` are the lines from outside.
  [[nodiscard]] std::uint8_t Lit(unsigned registre, std::uint32_t entrées) const;
  /// Writes a register, 0 to 3.
  void Ecrit(unsigned registre, std::uint8_t octet);
  /// The lines are driven.
  [[nodiscard]] bool EnSortie() const noexcept { return enSortie_; }
  /// The lines as they are driven, one a bit.
  [[nodiscard]] std::uint32_t Lignes() const noexcept { return verrous_; }

 private:
  bool perdSesVerrous_;
  bool enSortie_ = false;
  std::uint32_t verrous_ = 0;
};

/// PCL 731: two interfaces at 0 to 3 and 4 to 7, each on a connector of its own. The contacts stand
/// on the first one, and the outputs shown are the lines of the second. Lines that the board does
/// not drive are pulled up.
class CartePCL731 : public CarteSimulée {
 public:
  CartePCL731();
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override;
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;
  /// The first connector as the board drives it; none while it only reads its lines.
  [[nodiscard]] std::optional<std::uint32_t> PremierConnecteur() const;

 private:
  std::array<Interface8255, 2> interfaces_{Interface8255(false), Interface8255(false)};
};

/// PET 48 DIO: the same two interfaces behind a select port and a data port.
class CartePET48 : public CarteSimulée {
 public:
  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override;
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;

 private:
  std::array<Interface8255, 2> interfaces_{Interface8255(true), Interface8255(true)};
  std::uint8_t choisi_ = 0;
};

/// A 826 PG: 16 signed inputs of 16 bits, 2 outputs, 16 logic lines each way.
class CarteA826 : public CarteSimulée {
 public:
  /// A board whose conversions take their time by that clock.
  explicit CarteA826(HorlogeVirtuelle& horloge) : horloge_(horloge) {}
  [[nodiscard]] std::uint8_t Lit(std::uint16_t) override { return 0xFF; }
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;
  [[nodiscard]] std::uint16_t LitMot(std::uint16_t décalage) override;
  void EcritMot(std::uint16_t décalage, std::uint16_t mot) override;

  double conversion = 8;  ///< microseconds

 private:
  HorlogeVirtuelle& horloge_;
  unsigned gain_ = 0;
  unsigned voie_ = 0;
  bool enMode_ = false;
  double départ_ = 0;
  int code_ = 0;
  int ancien_ = 0;
};

}  // namespace zuma::sim
