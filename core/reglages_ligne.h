#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/liaison_serie.h"

namespace zuma {

/// Settings of a serial line, as the links take them.
struct RéglagesLigne {
  std::int32_t port = 0;           ///< from 1; 0 is none
  std::int32_t vitesse = 0;        ///< bauds
  std::int32_t parité = 0;         ///< 0 none, 1 odd, 2 even, 3 mark, 4 space
  std::int32_t bitsDeDonnées = 0;  ///< 4 to 8
  std::int32_t bitsDeStop = 0;     ///< 1, 15 (one and a half) or 2
};

/// Writes the settings in the order that the links expect, then opens the port.
void OuvreLigne(ZED_LiaisonSerie& liaison, const RéglagesLigne& réglages);

/// Reads the five comma-separated settings of an instrument's line ("2,9600,N,8,1"), in place and
/// part by part: a part that is not accepted leaves its setting, a missing one fails with 9 after
/// those before it. Ports are 1 to 4. A speed that is not known calls `vitesseInconnue` and gives
/// 9600.
void LitRéglagesLigne(std::string_view texte, RéglagesLigne& réglages,
                      const std::function<void()>& vitesseInconnue);

}  // namespace zuma
