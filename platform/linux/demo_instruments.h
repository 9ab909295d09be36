#pragma once

#include "platform/linux/demo_arbre.h"

namespace zuma::linux_ {

/// Boards that are one instrument each: laser, conditioners, tester, balance, amplifier.
extern const ChassisDémo kDémoInstruments;

}  // namespace zuma::linux_
