#pragma once

#include "host/verbes/releve.h"

namespace zuma::host {

/// Looks at rows together, over all frames of the file: Modbus blocks without an error channel,
/// the pulse of a watchdog, objects of one frame that write to one channel.
void ContrôleLesRenvois(const Relevé& relevé, Constats& constats);

}  // namespace zuma::host
