#include "dialogs/fenetres_d_etalonnage.h"

#include <memory>

#include "dialogs/cmde_normale_extrn_calibration.h"
#include "dialogs/cpt_normal_extrn_calibration.h"

namespace zuma {
namespace {

// The form that the object has, or a new one, which it keeps from here on.
template <class Feuille>
Ref<Feuille> LaFeuille(Ref<FeuilleTenue>& tenue) {
  if (auto feuille = std::dynamic_pointer_cast<Feuille>(tenue.Partagé())) return {feuille};
  const Ref<Feuille> neuve = Crée<Feuille>();
  tenue = neuve;
  return neuve;
}

}  // namespace

// A form that is on the screen is not filled again: what is being typed stays.
void FenêtresDEtalonnage::Etalonne(Capteur& capteur, const DemandeDEtalonnage& demande) {
  const auto feuille = LaFeuille<Cpt_Normal_Extrn_Calibration>(demande.feuille);
  if (!feuille->Visible()) {
    feuille->Traducteur(demande.traducteur);
    feuille->Reçoit(capteur);
  }
  feuille->Montre(feuille, *this, demande.mère);
}

void FenêtresDEtalonnage::Etalonne(Commande& commande, const Ref<Chassis>& chassis,
                                   const DemandeDEtalonnage& demande) {
  const auto feuille = LaFeuille<Cmde_Normale_Extrn_Calibration>(demande.feuille);
  if (!feuille->Visible()) {
    feuille->Traducteur(demande.traducteur);
    feuille->Reçoit(commande);
    feuille->Reçoit(*chassis);
  }
  feuille->Montre(feuille, *this, demande.mère);
}

}  // namespace zuma
