#pragma once

#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// What a board's driver object is made from.
struct Matériel {
  Plateforme& plateforme;  ///< services of the machine
  Ref<ZED_Timer> timer;    ///< timer of the frame
};

}  // namespace zuma
