#pragma once

#include <vector>

#include "core/chassis.h"
#include "host/problemes.h"

namespace zuma::host {

/// The boards of a loaded frame that can hold up a pass for so long, when their devices fall
/// silent, that the watchdog board trips: one problem each, with what to do. None without such a
/// watchdog.
[[nodiscard]] std::vector<Problème> RetenuesTropLongues(Chassis& chassis);
/// Writes them to the standard error, one line each, for who starts the frame all the same.
void DitLesRetenues(Chassis& chassis);

}  // namespace zuma::host
