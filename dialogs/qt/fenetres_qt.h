#pragma once

#include "dialogs/feuille_conditionneur_numerique.h"
#include "platform/collaborateurs.h"
#include "platform/fenetres.h"

namespace zuma::qt {

/// The forms of the library in Qt windows, for any host with a `QApplication`. Windows belong to
/// the host's window given with each form, or stand alone without one.
class FenêtresQt final : public Fenêtres {
 public:
  /// Captions of the windows' own come from the translator too, and the defaults without one.
  explicit FenêtresQt(Ref<ZED_Traduction> traducteur);

  void MontreModal(ChoixDuPort& feuille) override;
  [[nodiscard]] FeuilleConditionneurNumerique* FeuilleDuConditionneur() override {
    return &conditionneur_;
  }
  void Montre(FeuilleConditionneurNumerique& feuille, FenêtreHôte* mère) override;
  void Montre(Ref<Cpt_Normal_Extrn_Calibration> feuille, FenêtreHôte* mère) override;
  void Montre(Ref<Cmde_Normale_Extrn_Calibration> feuille, FenêtreHôte* mère) override;
  void TraiteLesEvénements() override;

 private:
  Ref<ZED_Traduction> traducteur_;
  FeuilleConditionneurNumerique conditionneur_{traducteur_};
};

}  // namespace zuma::qt
