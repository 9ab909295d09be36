#pragma once

#include <cstdint>

namespace zuma {

/// Kind of a sensor: where its value comes from.
enum class ENUM_TYPE_CAPTEUR : std::int32_t {
  capteurNormal = 0,
  CapteurMoyen = 10,
  CapteurRecouvrement = 11,
  CapteurContrainte = 12,
  CapteurTemps = 13,
  CapteurRégression = 14,
  CapteurDeltaL = 15,
  CapteurCombinaison = 16,
  CapteurSelectionnable = 17,
  CapteurRéservé1 = 1000,
  CapteurRéservé2 = 1001,
  CapteurScout55 = 1002,
  CapteurLvdtSolartron = 1004,
  CapteurLePlusPetit = 1005,
};

}  // namespace zuma
