#pragma once

#include "platform/linux/demo_arbre.h"

namespace zuma::linux_ {

/// PCI boards, encoder board and LVDT network.
extern const ChassisDémo kDémoPCI;

}  // namespace zuma::linux_
