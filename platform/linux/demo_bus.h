#pragma once

#include "platform/linux/demo_arbre.h"

namespace zuma::linux_ {

/// Buses and lines: rulers, balances, gauges, Modbus blocks and the drives.
extern const ChassisDémo kDémoBus;

}  // namespace zuma::linux_
