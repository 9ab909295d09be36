#pragma once

#include <cstdint>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/liaison_serie.h"
#include "tree/etat_pilote.h"

namespace zuma {

/// State of a METRO link, kept from pass to pass.
struct EtatMETRO : EtatPilote {
  std::int32_t Metro_CanalActif = 0;              ///< gauge found on the link; 0 is none
  double Metro_Temps = 0;                         ///< of the last request, in microseconds
  std::vector<std::int32_t> Metro_CanauxValides;  ///< gauges that answered on a multiplexer
  std::size_t rang = 0;                           ///< of the gauge asked, in `Metro_CanauxValides`
  bool enCours = false;                           ///< the first gauge was asked
  Octets tampon;                                  ///< what came in and is not decoded yet
};

}  // namespace zuma

/// METRO gauges, alone on a line or behind a multiplexer.
namespace zuma::metro {

/// Asks gauge `numéro` for its measure, for at most 6 seconds. True when it answers: it is then
/// enabled, and disabled when its answer is no measure.
[[nodiscard]] bool ContrôleCanal(std::int32_t numéro, ZED_LiaisonSerie& ligne, ZED_Timer& timer);
/// The same behind a multiplexer, for at most 3 seconds.
[[nodiscard]] bool ContrôleCanalMETRO_MUX2_4_8(std::int32_t numéro, ZED_LiaisonSerie& ligne,
                                               ZED_Timer& timer);

}  // namespace zuma::metro
