#pragma once

#include "platform/collaborateurs.h"

namespace zuma::host {

/// The timer that a frame and its sensors read: it stands at the instant of the last refresh, and
/// moves only when the host sets it. All that is computed in one pass is of one instant, and who
/// has the instants and the points of the channels can compute every sensor again, to the last bit.
/// Devices have a timer that runs: what they wait for comes during a pass.
class HorlogeDePasse final : public ZED_Timer {
 public:
  /// Stands at that instant, microseconds.
  explicit HorlogeDePasse(double instant) : instant_(instant) {}
  [[nodiscard]] double LitMicrosecondes() override { return instant_; }
  /// Moves the timer to an instant of the machine, whatever it stood at.
  void Pose(double microsecondes) { instant_ = microsecondes; }

 private:
  double instant_;  ///< microseconds
};

}  // namespace zuma::host
