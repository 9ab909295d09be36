#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zuma {

/// Magnitudes between which a gain stays: below the first it goes up, above the second down. They
/// stand at about half and all of a converter's range, less a margin.
struct SeuilsDeGain {
  double montée;    ///< below it the gain goes up
  double descente;  ///< above it the gain goes down
};
/// For signed conversions of 16 bits.
inline constexpr SeuilsDeGain kSeuils16Bits{16284, 32668};
/// For conversions of 12 bits, from the middle of the range.
inline constexpr SeuilsDeGain kSeuils12Bits{1948, 3995};

/// Gain codes of a board; each code doubles the gain of the one before.
struct PlageDeGains {
  std::int16_t premier;  ///< that of gain 1
  std::int16_t dernier;  ///< that of the highest gain
};
/// Codes of the port-mapped boards.
inline constexpr PlageDeGains kGainsPortsES{0, 3};

/// A signal that jumps past both thresholds from one conversion to the next would be chased for
/// ever, and hold the pass with it: after this many conversions the gain only comes down.
inline constexpr int kConversionsAvecMontée = 32;

/// One conversion with automatic range: converts again until the gain found stays. `gain` starts
/// at the code given and ends at the one found. The value is brought to gain 1 (the first code), so
/// that one signal gives one value at any gain.
template <class Conversion>
double LitAvecGain(std::int16_t& gain, SeuilsDeGain seuils, Conversion&& conversion,
                   PlageDeGains plage = kGainsPortsES) {
  for (int conversions = 1;; ++conversions) {
    const std::int16_t essayé = gain;
    const double lecture = conversion(essayé);
    const double grandeur = std::fabs(lecture);
    if (grandeur < seuils.montée && conversions <= kConversionsAvecMontée) ++gain;
    if (grandeur > seuils.descente) --gain;
    gain = std::clamp(gain, plage.premier, plage.dernier);
    if (gain == essayé) return lecture / std::ldexp(1.0, essayé - plage.premier);
  }
}

}  // namespace zuma
