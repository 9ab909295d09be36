#pragma once

#include <optional>

#include "sensors/capteur.h"

namespace zuma {

/// The reading of a sensor; none from one that is out of service, not selected or below its valid
/// readings, whose value is no number or whose instrument has given nothing yet. Those are missing
/// readings, and never 0.
[[nodiscard]] std::optional<double> LectureDe(const Capteur& capteur);

/// The sensor is made from a reading that is old. One that is out of service or not selected shows
/// no reading that could be.
[[nodiscard]] bool EstAncien(const Capteur& capteur);

}  // namespace zuma
