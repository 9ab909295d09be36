#pragma once

#include <QPointer>
#include <utility>
#include <vector>

#include "dialogs/fenetres_d_etalonnage.h"
#include "dialogs/feuille_conditionneur_numerique.h"
#include "dialogs/qt/fenetre_de_feuille.h"
#include "dialogs/qt/mots.h"
#include "platform/fenetres.h"

namespace zuma::qt {

class FenêtreChoixDuPort;

/// The forms of the library in Qt windows, for any host with a `QApplication`. Windows belong to
/// the host's window given with each form, or stand alone without one. They end with this, with the
/// host's window or with the application, whichever is first.
///
/// **Hazard**: a modal form, and a form at work, let the timers of the program fire inside the call
/// that shows them. A host that runs its passes from one must not start a pass inside another, nor
/// inside the start of a board: it keeps a flag for as long as a call into the frame lasts.
class FenêtresQt final : public FenêtresDEtalonnage {
 public:
  /// Captions of the windows' own come from the translator too, and the defaults without one.
  explicit FenêtresQt(Ref<ZED_Traduction> traducteur);
  ~FenêtresQt() override;
  FenêtresQt(const FenêtresQt&) = delete;
  FenêtresQt& operator=(const FenêtresQt&) = delete;

  /// Fails with 91 when nobody can answer: there is no application, or it is ending.
  void MontreModal(ChoixDuPort& feuille) override;
  [[nodiscard]] FeuilleConditionneurNumerique* FeuilleDuConditionneur() override {
    return &conditionneur_;
  }
  /// The others fail with 91 without an application.
  void Montre(FeuilleConditionneurNumerique& feuille, FenêtreHôte* mère) override;
  void Montre(Ref<Cpt_Normal_Extrn_Calibration> feuille, FenêtreHôte* mère) override;
  void Montre(Ref<Cmde_Normale_Extrn_Calibration> feuille, FenêtreHôte* mère) override;
  void TraiteLesEvénements() override;

  /// Has the calibration forms ask before they change a reading or an output: a host answers while
  /// a stop is latched, since outputs may follow what is calibrated. For windows made from now on.
  void Refuse(Refus refus) { refus_ = std::move(refus); }

 private:
  template <class Fenêtre, class Feuille>
  void Présente(Feuille& feuille, const auto& crée, FenêtreHôte* mère);

  Mots mots_;
  FeuilleConditionneurNumerique conditionneur_;
  std::vector<QPointer<FenêtreDeFeuille>> fenêtres_;
  Refus refus_;
  FenêtreChoixDuPort* choix_ = nullptr;  ///< the modal form on the screen
};

}  // namespace zuma::qt
