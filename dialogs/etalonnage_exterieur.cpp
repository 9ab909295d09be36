// The operations of the model that open the calibration forms. They stand beside the forms, so that
// sensors and commands need to know none of them.
#include <utility>

#include "commands/commande.h"
#include "core/chassis.h"
#include "core/garde.h"
#include "dialogs/cmde_normale_extrn_calibration.h"
#include "dialogs/cpt_normal_extrn_calibration.h"
#include "sensors/capteur.h"

namespace zuma {

Capteur::~Capteur() {
  (void)Capteur::ResetFeuilleEtalonnage();
}

// A form that is still on the screen goes too: it would not hear of the end of its object.
Valeur Capteur::ResetFeuilleEtalonnage() {
  const auto feuille = std::exchange(mobjFeuilleEtalonnage, nullptr);
  if (feuille) feuille->OublieLeCapteur();
  return {};
}

Valeur Capteur::EtalonnageExterieur(FenêtreHôte* FeuilleMere_obj) {
  return Garde(*this, Forme::Méthode, "EtalonnageExterieur", [&]() -> Valeur {
    if (!EtalonnageExterieurPossible_) return {};
    Fenêtres& fenêtres = *LaPlateforme().fenêtres;
    if (!mobjFeuilleEtalonnage) mobjFeuilleEtalonnage = Crée<Cpt_Normal_Extrn_Calibration>();
    if (!mobjFeuilleEtalonnage->Visible()) {
      mobjFeuilleEtalonnage->Traducteur(Traducteur_obj_);
      mobjFeuilleEtalonnage->Reçoit(*this);
    }
    mobjFeuilleEtalonnage->Montre(mobjFeuilleEtalonnage, fenêtres, FeuilleMere_obj);
    return {};
  });
}

Commande::~Commande() {
  (void)Commande::ResetFeuilleEtalonnage();
}

Valeur Commande::ResetFeuilleEtalonnage() {
  const auto feuille = std::exchange(feuille_, nullptr);
  if (feuille) feuille->OublieLaCommande();
  return {};
}

Valeur Commande::EtalonnageExterieur(FenêtreHôte* FeuilleMere_obj) {
  return Garde(*this, Forme::Méthode, "EtalonnageExterieur", [&]() -> Valeur {
    if (TypeCommande_ != ENUM_TYPE_COMMANDE::Recopie) return {};
    Fenêtres& fenêtres = *LaPlateforme().fenêtres;
    if (!feuille_) feuille_ = Crée<Cmde_Normale_Extrn_Calibration>();
    // A form on the screen keeps what is being typed in it.
    if (!feuille_->Visible()) {
      feuille_->Traducteur(traducteur_);
      feuille_->Reçoit(*this);
      feuille_->Reçoit(*Ref<Chassis>(chassis_.lock()));
    }
    feuille_->Montre(feuille_, fenêtres, FeuilleMere_obj);
    return {};
  });
}

}  // namespace zuma
