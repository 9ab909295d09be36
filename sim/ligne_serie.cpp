#include "sim/ligne_serie.h"

namespace zuma::sim {

Octets LigneSérie::Relève() {
  Octets octets = appareil->Emet();
  if (pannes.figée && !octets.empty()) {
    if (figés.empty()) figés = octets;
    octets = figés;
  }
  if (!pannes.figée) figés.clear();
  if (pannes.tardive && !octets.empty()) {
    enRoute.emplace_back(secondes + kRetard, std::exchange(octets, {}));
  }
  Octets arrivés;
  while (!enRoute.empty() && (!pannes.tardive || enRoute.front().first <= secondes)) {
    arrivés += enRoute.front().second;
    enRoute.pop_front();
  }
  arrivés += octets;
  Abîme(pannes, hasard, arrivés);
  return arrivés;
}

}  // namespace zuma::sim
