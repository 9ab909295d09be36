#pragma once

#include <cmath>
#include <numbers>

#include "base/echec.h"

/// Plain trigonometry of the section formulas.
namespace zuma::OutilsTrigonométrie {

/// The circle number.
[[nodiscard]] constexpr double Pi() noexcept {
  return std::numbers::pi;
}

/// Arc sine in radians; outside -1 to 1, failure 5.
[[nodiscard]] inline double ArcSinus(double x) {
  if (!(std::abs(x) <= 1)) throw Echec(Numéro::AppelIncorrect);
  return std::asin(x);
}

}  // namespace zuma::OutilsTrigonométrie
