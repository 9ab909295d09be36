#pragma once

#include <string>

namespace zuma {

/// A live value as the calibration forms show it, with the decimal comma: six characters, or all
/// integer digits when they are more; a comma never ends it.
[[nodiscard]] std::string AffichageCourt(double valeur);

}  // namespace zuma
