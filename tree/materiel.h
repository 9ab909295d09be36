#pragma once

#include "platform/collaborateurs.h"
#include "platform/plateforme.h"

namespace zuma {

/// What a board's driver object is made from.
struct Matériel {
  Plateforme& plateforme;
  Ref<ZED_Timer> timer;
};

}  // namespace zuma
