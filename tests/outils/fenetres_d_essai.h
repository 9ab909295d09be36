#pragma once

#include <functional>
#include <utility>

#include "dialogs/choix_du_port.h"
#include "dialogs/cmde_normale_extrn_calibration.h"
#include "dialogs/cpt_normal_extrn_calibration.h"
#include "dialogs/fenetres_d_etalonnage.h"

namespace zuma::essai {

/// Windows of a host without a screen: an operator given by the test answers the modal forms.
class FenêtresDEssai : public FenêtresDEtalonnage {
 public:
  void MontreModal(ChoixDuPort& feuille) override {
    ++montrées;
    opérateur(feuille);
  }
  void Montre(FeuilleConditionneurNumerique&, FenêtreHôte*) override {}
  void Montre(Ref<Cpt_Normal_Extrn_Calibration> feuille, FenêtreHôte*) override {
    if (sansEcran) throw Echec(Numéro::MatérielAbsent);
    ++montrées;
    capteur = std::move(feuille);
  }
  void Montre(Ref<Cmde_Normale_Extrn_Calibration> feuille, FenêtreHôte*) override {
    ++montrées;
    commande = std::move(feuille);
  }
  void TraiteLesEvénements() override { événements(); }

  std::function<void(ChoixDuPort&)> opérateur = [](ChoixDuPort&) {};
  std::function<void()> événements = [] {};
  int montrées = 0;
  bool sansEcran = false;
  // The last calibration forms shown, held as a window holds them.
  Ref<Cpt_Normal_Extrn_Calibration> capteur;
  Ref<Cmde_Normale_Extrn_Calibration> commande;
};

}  // namespace zuma::essai
