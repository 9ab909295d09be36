#include "logic/etat_activation.h"

#include "base/outils_communs.h"

namespace zuma {

void LitEtatDActivation(const Recordset& ligne, bool& haut) {
  const Valeur valeur = OutilsCommuns::LitChampSûr(LitChamp(ligne, "Etat d'Activation"));
  if (EstNul(valeur)) return;
  const double état = VersDouble(valeur);
  if (état == 0) haut = false;
  if (état == 1) haut = true;
}

}  // namespace zuma
