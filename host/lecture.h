#pragma once

#include <optional>

#include "sensors/capteur.h"

namespace zuma::host {

/// The reading of a sensor; none from one that is out of service, not selected or below its valid
/// readings, or whose value is no number. Those are missing readings, and never 0.
[[nodiscard]] std::optional<double> LectureDe(const Capteur& capteur);

}  // namespace zuma::host
