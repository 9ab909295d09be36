#pragma once

#include <cstdint>

#include "tree/enumerations.h"

namespace zuma {

/// One channel of a digital conditioner and its last value.
struct ClassCanalElementK9 {
  std::int32_t IndexCanal = 0;                                ///< from 0
  ENUM_TYPE_FONCTION LeType = ENUM_TYPE_FONCTION::FctAucune;  ///< kind of the channel
  double Valeur = 0;                                          ///< raw units of the module
};

}  // namespace zuma
