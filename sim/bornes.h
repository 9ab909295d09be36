#pragma once

#include <array>
#include <cstdint>

#include "sim/bus_ports.h"

namespace zuma::sim {

/// Full scale of the analog terminals of every simulated board, in volts.
inline constexpr double kVoltsPleineEchelle = 10;

inline constexpr int kLignesParCarte = 32;

/// What stands at the terminals of a simulated board: inputs are set from outside, outputs by the
/// board's registers.
struct Bornes {
  std::array<double, kLignesParCarte> entréesAnalogiques{};  ///< volts
  std::array<double, kLignesParCarte> sortiesAnalogiques{};  ///< volts
  std::uint32_t entréesLogiques = 0;                         ///< one bit a line, electrical level
  std::uint32_t sortiesLogiques = 0;
  double fréquence = 0;  ///< hertz of a square wave output
};

/// A simulated board with its terminals.
class CarteSimulée : public AppareilPorts {
 public:
  Bornes bornes;
};

/// Counts of a signed converter of `codes` codes each side, at a gain of 2 to the power of `gain`.
[[nodiscard]] int CodeSigné(double volts, unsigned gain, int codes);
/// Counts of a converter from 0 to `codes` - 1.
[[nodiscard]] int CodePositif(double volts, unsigned gain, int codes);

}  // namespace zuma::sim
