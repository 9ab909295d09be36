#pragma once

#include "sensors/capteur.h"

namespace zuma::host {

/// What a key of the terminal does to a sensor: `t` tares it, `c` cancels that, `z` zeroes it where
/// it may be, `m` resets its extremes; another key nothing. While a stop is latched what changes
/// the reading is refused: a command may follow it.
void FaitLeGeste(char touche, Capteur& capteur, bool arrêt);

}  // namespace zuma::host
