#pragma once

#include <memory>
#include <string>

#include "host/machine.h"

namespace zuma::host {

/// A recording in the place of a machine: the frame starts on `dessous`, then its boards are not
/// asked any more, and each row of the recording is one pass, at its own instant, with the points
/// that the channels had and with the zeros and tares that were taken. The sensors are today's:
/// those of a frame whose calibration, limits and parameters did not change read what they read
/// then, to the last bit.
///
/// A sensor that asks an instrument on a line of its own has no channel, and is taken out of
/// service; which ones, and what else is not as it was, is told on the error output. Throws
/// `MauvaisUsage` for a file without clock and channels (`run --csv FILE --channels` makes one
/// that has them), and on the start for a frame without the channels recorded.
[[nodiscard]] std::unique_ptr<Machine> MachineRejouée(std::unique_ptr<Machine> dessous,
                                                      const std::string& enregistrement,
                                                      Cadence cadence);

/// Parameters that the recording was made with, "index=value".
[[nodiscard]] std::vector<std::string> ParamètresEnregistrés(const std::string& enregistrement);

}  // namespace zuma::host
