#pragma once

#include "sim/bus_ports.h"
#include "tree/jumeau_de_driver.h"

namespace zuma::sim {

/// Full scale of the analog terminals of every simulated board, in volts.
inline constexpr double kVoltsPleineEchelle = 10;

using zuma::Bornes;
using zuma::kLignesParCarte;

/// A simulated board with its terminals.
class CarteSimulée : public AppareilPorts {
 public:
  Bornes bornes;  ///< what stands at its terminals
};

/// Counts of a signed converter of `codes` codes each side, at a gain of 2 to the power of `gain`.
[[nodiscard]] int CodeSigné(double volts, unsigned gain, int codes);
/// Counts of a converter from 0 to `codes` - 1.
[[nodiscard]] int CodePositif(double volts, unsigned gain, int codes);

}  // namespace zuma::sim
