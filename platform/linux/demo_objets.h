#pragma once

#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::linux_ {

/// Sensors, commands, logic inputs and outputs and the watchdog of the demonstration frame, on the
/// channels of `LignesDeDémonstration`.
void AjouteLesObjetsDeDémonstration(std::vector<LigneDeBase>& lignes);

}  // namespace zuma::linux_
