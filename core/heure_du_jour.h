#pragma once

#include "platform/services.h"

namespace zuma {

/// Seconds gone since `départ` on the clock of the day, midnight passed once at most.
[[nodiscard]] inline double SecondesDepuis(const Horloge& horloge, double départ) {
  constexpr double kJour = 24 * 3600;
  const double écoulé = horloge.HeureDuJour() - départ;
  return écoulé < -kJour / 2 ? écoulé + kJour : écoulé;
}

}  // namespace zuma
