// The longest pass of each driver, as the table of docs/passes.md.
#include <cstdio>

#include "bench/scenarios.h"
#include "boards/table_des_drivers.h"
#include "outils/passes_mesurees.h"

namespace zuma::banc {

void RapportDesPasses() {
  std::printf(
      "| Driver | Channels | Pass, healthy (ms) | Pass, silent (ms) | Share of a stop, silent (ms) "
      "|\n|---|---|---|---|---|\n");
  const Ref<RegistreDesDrivers> drivers = CréeLesDrivers();
  for (const essai::PasseMesurée& mesure : essai::MesureLesPasses()) {
    const LigneDriver& ligne = drivers->DeValeur(mesure.driver);
    std::printf("| %.*s | %d | %.2f | %.2f | %.2f |\n", static_cast<int>(ligne.nom.size()),
                ligne.nom.data(), mesure.canaux, mesure.saine / 1000, mesure.muette / 1000,
                mesure.arrêt / 1000);
  }
}

}  // namespace zuma::banc
