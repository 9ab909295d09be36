// The operations of the model that open the calibration forms. They stand beside the forms, so that
// sensors and commands need to know none of them.
#include "commands/commande.h"
#include "core/garde.h"
#include "dialogs/cmde_normale_extrn_calibration.h"
#include "dialogs/cpt_normal_extrn_calibration.h"
#include "sensors/capteur.h"

namespace zuma {

Capteur::~Capteur() {
  if (mobjFeuilleEtalonnage) mobjFeuilleEtalonnage->OublieLeCapteur();
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
  Commande::OublieLeChassis();
}

void Commande::OublieLeChassis() noexcept {
  chassis_ = nullptr;
  if (feuille_) feuille_->OublieLaCommande();
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
      feuille_->Reçoit(*chassis_);
    }
    feuille_->Montre(feuille_, fenêtres, FeuilleMere_obj);
    return {};
  });
}

}  // namespace zuma
