#include "sim/bornes.h"

#include <algorithm>
#include <cmath>

namespace zuma::sim {
namespace {

int Code(double volts, unsigned gain, int codes, int minimum) {
  const double amplifié = volts * std::exp2(gain) / kVoltsPleineEchelle * codes;
  return static_cast<int>(
      std::clamp(std::floor(amplifié + 0.5), double(minimum), double(codes - 1)));
}

}  // namespace

int CodeSigné(double volts, unsigned gain, int codes) {
  return Code(volts, gain, codes, -codes);
}

int CodePositif(double volts, unsigned gain, int codes) {
  return Code(volts, gain, codes, 0);
}

}  // namespace zuma::sim
