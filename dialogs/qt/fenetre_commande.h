#pragma once

#include <QComboBox>

#include "dialogs/cmde_normale_extrn_calibration.h"
#include "dialogs/qt/fenetre_etalonnage.h"

namespace zuma::qt {

/// Window of the command's calibration form.
class FenêtreCommande final : public FenêtreEtalonnage {
 public:
  /// A window of that form; `refus` is asked before an output changes.
  FenêtreCommande(const Ref<Cmde_Normale_Extrn_Calibration>& feuille, const Mots& mots,
                  const Refus& refus = {});

 protected:
  void Relit() override;
  void AfficheLesValeurs(bool sûres) override;

 private:
  Ref<Cmde_Normale_Extrn_Calibration> feuille_;
  QComboBox* suivi_;
  QLabel* capteur_;
  QLabel* sortie_;
  QLabel* saisie_;
};

}  // namespace zuma::qt
