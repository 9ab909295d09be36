#pragma once

#include <string>
#include <vector>

#include "core/chassis.h"
#include "host/machine.h"
#include "host/terminal.h"

namespace zuma::host {

/// The frame as a person watches it: boards, blocks, and the channels side by side.
[[nodiscard]] std::vector<std::string> VueVivante(Chassis& chassis, const Machine& machine,
                                                  const Terminal& terminal, double secondes);

/// The frame as lines for a file or another program, one a channel, fields between bars.
[[nodiscard]] std::vector<std::string> VueEnLignes(Chassis& chassis, const Machine& machine,
                                                   double secondes);

/// The frame as one line of JSON.
[[nodiscard]] std::string VueEnJson(Chassis& chassis, const Machine& machine, double secondes);

}  // namespace zuma::host
