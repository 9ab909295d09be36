#pragma once

#include <QCheckBox>
#include <QLineEdit>

#include "dialogs/cpt_normal_extrn_calibration.h"
#include "dialogs/qt/fenetre_etalonnage.h"

namespace zuma::qt {

/// Window of the sensor's calibration form.
class FenêtreCapteur final : public FenêtreEtalonnage {
 public:
  /// A window of that form; `refus` is asked before a reading changes.
  FenêtreCapteur(const Ref<Cpt_Normal_Extrn_Calibration>& feuille, const Mots& mots,
                 const Refus& refus = {});

 protected:
  void Relit() override;
  void AfficheLesValeurs(bool sûres) override;

 private:
  [[nodiscard]] QLineEdit* Champ(const char* nom,
                                 std::string Cpt_Normal_Extrn_Calibration::* texte);

  Ref<Cpt_Normal_Extrn_Calibration> feuille_;
  QLineEdit* nomAffiché_;
  QLineEdit* unité_;
  QLabel* brute_;
  QLabel* courante_;
  QLabel* saisie_;
  QCheckBox* tare_;
};

}  // namespace zuma::qt
