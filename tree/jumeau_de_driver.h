#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace zuma {

/// Lines of each kind that a simulated board can have.
inline constexpr int kLignesParCarte = 32;

/// What stands at the terminals of a simulated board: inputs are set from outside, outputs by the
/// board's registers.
struct Bornes {
  std::array<double, kLignesParCarte> entréesAnalogiques{};  ///< volts
  std::array<double, kLignesParCarte> sortiesAnalogiques{};  ///< volts
  std::uint32_t entréesLogiques = 0;                         ///< one bit a line, electrical level
  std::uint32_t sortiesLogiques = 0;  ///< one bit a line, as the board drives them
  double fréquence = 0;               ///< hertz of a square wave output
};

/// What a twin finds around it at one access to its registers.
struct AutourDuJumeau {
  Bornes& bornes;                 ///< terminals of this board
  std::uint32_t entréesLogiques;  ///< as this look finds them: contacts may bounce
  bool bloquée;                   ///< a fault is on: what the board is waited for never comes
  double microsecondes;           ///< clock of the simulated machine
};

/// The twin of a port-mapped board at the level of its registers, for a row whose board the
/// simulated machine does not know. Offsets count from the base address; wider accesses come as
/// bytes, low one first. A pulled board is the bus's affair.
class JumeauDeCarte {
 public:
  virtual ~JumeauDeCarte() = default;
  /// A byte read from the register at that offset.
  [[nodiscard]] virtual std::uint8_t Lit(std::uint16_t décalage, const AutourDuJumeau& autour) = 0;
  /// A byte written to the register at that offset.
  virtual void Ecrit(std::uint16_t décalage, std::uint8_t octet, const AutourDuJumeau& autour) = 0;
};

/// Whether a channel sits on the line of its rank in the block rather than of its number.
enum class ParRang : std::uint8_t {
  Jamais,
  Toujours,
  EnBloc  ///< where the block is refreshed as a whole
};

/// Where a twin answers, and how its lines reach the channels.
struct PlaceDuJumeau {
  std::uint16_t ports = 16;           ///< ports that it takes from its base address on
  ParRang parRang = ParRang::Jamais;  ///< which line a channel sits on
  bool inversé = false;               ///< a line at 0 is the true state
  std::uint16_t masque = 0xFFFF;      ///< bits of the address that count
  int première = 0;                   ///< number of the channel on the first line
};

/// How a row brings its twin along. Rows that serve one board, its inputs and its outputs say, name
/// the same twin: the first block at a base address plugs it.
struct JumeauDeDriver {
  std::unique_ptr<JumeauDeCarte> (*crée)() = nullptr;  ///< never Nothing
  /// Where it answers.
  PlaceDuJumeau place{};
};

}  // namespace zuma
