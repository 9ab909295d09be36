#pragma once

#include "host/ligne_lue.h"
#include "platform/collaborateurs.h"

namespace zuma::host {

/// Looks at one row by itself: calibration tables, limits, filters of stop inputs, Modbus
/// functions, rates of drives, on/off commands, parameters that hold nothing. `paramètres`: those
/// that the sensors refer to; Nothing for none.
void ContrôleLaLigne(const LigneLue& ligne, const ParamètresRef& paramètres, Constats& constats);

}  // namespace zuma::host
