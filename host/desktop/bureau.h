#pragma once

#include <memory>

#include "dialogs/qt/fenetres_qt.h"
#include "host/chassis_en_marche.h"
#include "host/desktop/battement.h"
#include "host/desktop/fenetre_principale.h"
#include "host/desktop/messages_du_bureau.h"
#include "host/desktop/textes.h"
#include "host/machine.h"
#include "host/verbes/verbes.h"

namespace zuma::host {

/// A frame in its window, from load to release. Needs a `QApplication`.
class Bureau {
 public:
  /// Loads and starts the frame. A file, frame or language that is not there is misuse.
  explicit Bureau(const OptionsDesktop& options);
  /// Puts the outputs to rest and releases the frame.
  ~Bureau();
  Bureau(const Bureau&) = delete;
  Bureau& operator=(const Bureau&) = delete;

  [[nodiscard]] FenêtrePrincipale& Fenêtre() { return *fenêtre_; }
  [[nodiscard]] ChassisEnMarche& LaMarche() { return *marche_; }
  [[nodiscard]] Machine& LaMachine() { return *machine_; }
  [[nodiscard]] Battement& LeBattement() { return battement_; }
  [[nodiscard]] const Ref<Recueil>& LeRecueil() const { return recueil_; }

 private:
  void SuitLesEtalonnages();

  [[nodiscard]] Battement::Travail Travail();
  void AprèsLaPasse(double secondes);

  Ref<Recueil> recueil_ = Crée<Recueil>();
  Ref<ZED_Traduction> traducteur_;
  Textes textes_;
  Battement battement_{Travail()};
  MessagesDuBureau messages_{recueil_, traducteur_, battement_};
  std::unique_ptr<Machine> machine_;
  qt::FenêtresQt fenêtres_;
  QTimer rapports_;  ///< what the machine tells on its own
  // The frame goes before the window, which owns its forms on the screen.
  std::unique_ptr<FenêtrePrincipale> fenêtre_;
  std::unique_ptr<ChassisEnMarche> marche_;
  bool étalonne_ = false;  ///< a calibration form is open
};

}  // namespace zuma::host
