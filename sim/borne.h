#pragma once

#include <cstdint>

#include "sim/bornes.h"

namespace zuma::sim {

/// The terminal that one channel sits on. A board numbers its lines, a block hands them to its
/// channels by number or by rank, and some terminal boards invert them: here all of that is
/// undone, so that states are those that the channel's block sees.
class Borne {
 public:
  /// `inversée`: the line at 0 is the true state.
  Borne(Bornes& bornes, std::uint8_t ligne, bool inversée)
      : bornes_(&bornes), ligne_(ligne), inversée_(inversée) {}

  /// Line of the board, from 0.
  [[nodiscard]] std::uint8_t Ligne() const noexcept { return ligne_; }
  ///@{
  /// All terminals of the board.
  [[nodiscard]] const Bornes& DeLaCarte() const noexcept { return *bornes_; }
  [[nodiscard]] Bornes& DeLaCarte() noexcept { return *bornes_; }
  ///@}

  /// Puts a voltage on the analog input.
  void TensionEntrée(double volts) { bornes_->entréesAnalogiques[ligne_] = volts; }
  /// Voltage of the analog output.
  [[nodiscard]] double TensionSortie() const { return bornes_->sortiesAnalogiques[ligne_]; }
  /// Puts a state on the logic input.
  void EntréeLogique(bool vraie);
  /// State of the logic output.
  [[nodiscard]] bool SortieLogique() const;

 private:
  Bornes* bornes_;
  std::uint8_t ligne_;
  bool inversée_;
};

/// Points that a channel reads for a voltage within its board's range, whatever the board but a
/// counter of encoders.
[[nodiscard]] constexpr double PointsPourVolts(double volts) noexcept {
  return volts / kVoltsPleineEchelle * 65536;
}

}  // namespace zuma::sim
