#pragma once

#include "base/ref.h"
#include "platform/fenetres.h"

namespace zuma {

class Cmde_Normale_Extrn_Calibration;
class Cpt_Normal_Extrn_Calibration;

/// Windows for hosts that paint the library's calibration forms: makes and fills the form of an
/// object, and asks for its window alone.
class FenêtresDEtalonnage : public Fenêtres {
 public:
  void Etalonne(Capteur& capteur, const DemandeDEtalonnage& demande) final;
  void Etalonne(Commande& commande, const Ref<Chassis>& chassis,
                const DemandeDEtalonnage& demande) final;

  using Fenêtres::Montre;
  ///@{
  /// Shows a calibration form as a child of `mère`, or brings it to the front, and returns at once.
  virtual void Montre(Ref<Cpt_Normal_Extrn_Calibration> feuille, FenêtreHôte* mère) = 0;
  virtual void Montre(Ref<Cmde_Normale_Extrn_Calibration> feuille, FenêtreHôte* mère) = 0;
  ///@}
};

}  // namespace zuma
