#include "dialogs/qt/fenetre_commande.h"

#include "dialogs/qt/liste_de_choix.h"

namespace zuma::qt {

FenêtreCommande::FenêtreCommande(const Ref<Cmde_Normale_Extrn_Calibration>& feuille,
                                 const Mots& mots, const Refus& refus)
    : FenêtreEtalonnage(feuille, mots, refus),
      feuille_(feuille),
      suivi_(BoîteDe(feuille->CmbCapteurARecopier, "CmbCapteurARecopier")),
      capteur_(AjouteValeur("LegendeValeurCapteur", "Valeur du capteur", "LblValeurCapteur")),
      sortie_(AjouteValeur("LegendeValeurSortie", "Valeur de sortie", "LblValeurSortie")),
      saisie_(AjouteValeur("LegendeValeurSaisie", "Valeur avec cette table", "LblValeurSaisie")) {
  AjouteChamp("LegendeCapteurARecopier", "Capteur à recopier", suivi_);
  Enchaîne({suivi_}, {});
}

void FenêtreCommande::Relit() {
  FenêtreEtalonnage::Relit();
  qt::Relit(*suivi_, feuille_->CmbCapteurARecopier);
}

void FenêtreCommande::AfficheLesValeurs(bool sûres) {
  Affiche(*capteur_, feuille_->LblValeurCapteur(), sûres);
  Affiche(*sortie_, feuille_->LblValeurSortie(), sûres);
  Affiche(*saisie_, feuille_->LblValeurSaisie(), sûres);
}

}  // namespace zuma::qt
