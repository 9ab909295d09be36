#pragma once

#include <cstdint>

#include "platform/collaborateurs.h"
#include "platform/liaison_serie.h"

/// METRO gauges, alone on a line or behind a multiplexer.
namespace zuma::metro {

/// Asks gauge `numéro` for its measure, for at most 6 seconds. True when it answers: it is then
/// enabled, and disabled when its answer is no measure.
[[nodiscard]] bool ContrôleCanal(std::int32_t numéro, ZED_LiaisonSerie& ligne, ZED_Timer& timer);
/// The same behind a multiplexer, for at most 3 seconds.
[[nodiscard]] bool ContrôleCanalMETRO_MUX2_4_8(std::int32_t numéro, ZED_LiaisonSerie& ligne,
                                               ZED_Timer& timer);

}  // namespace zuma::metro
