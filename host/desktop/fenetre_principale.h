#pragma once

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <utility>

#include "dialogs/qt/fenetre_qt.h"
#include "host/chassis_en_marche.h"
#include "host/desktop/battement.h"
#include "host/desktop/enregistrement_du_bureau.h"
#include "host/desktop/fiche_commande.h"
#include "host/desktop/table_capteurs.h"

class QLabel;
class QMenu;
class QSplitter;
class QTabWidget;

namespace zuma::host {

class VoletArrêt;
class VoletCapteurs;
class VoletCommandes;
class VoletCourbes;
class VoletEssai;
class VoletLogique;
class VoletMessages;

/// The window of a running frame: its panes, its menus, and the pace at which they are painted.
class FenêtrePrincipale : public QMainWindow {
 public:
  /// Wished for; a smaller screen gets a smaller window.
  static constexpr QSize kTaille{1400, 980};

  /// The compression test is offered `avecEssai`, on a frame that has what it needs.
  FenêtrePrincipale(ChassisEnMarche& marche, Battement& battement, Ref<Recueil> recueil,
                    const Textes& textes, bool avecEssai);
  ~FenêtrePrincipale() override;

  /// Behind each pass.
  void AprèsLaPasse(double secondes);
  [[nodiscard]] EnregistrementDuBureau& LEnregistrement() { return enregistrement_; }
  /// Begins the test; nothing where it is not offered.
  void CommenceLEssai();
  /// 0 the curves, 1 the test.
  void MontreLOnglet(int rang);
  /// Shows everything anew.
  void RafraîchitTout();
  /// What follows the closing of the window.
  void QuandFermée(std::function<void()> fait) { fermée_ = std::move(fait); }
  /// The frame goes away: nothing is asked of it any more.
  void Fige();

 protected:
  void closeEvent(QCloseEvent* demande) override;

 private:
  /// Runs what an operator asked for; a failure goes to the messages.
  void Fait(const std::function<void()>& travail);
  void Arrête();
  void Compose();
  void AjouteLEssai();
  [[nodiscard]] QWidget* Gauche();
  [[nodiscard]] QWidget* Droite();
  void AjouteLesMenus();
  QMenu& AjouteLeMenu(std::string_view titre, const char* nom);
  void AjouteLaBarreDEtat();
  void ChangeLEnregistrement();
  void MontreLEnregistrement();
  void ChangeLaPolice(int points);
  void Rafraîchit();
  void MontreLesMesures();
  [[nodiscard]] QWidget* Cadre(std::string_view titre, QWidget* volet);

  ChassisEnMarche& marche_;
  Battement& battement_;
  Ref<Recueil> recueil_;
  const Textes& textes_;
  qt::FenêtreQt hôte_;
  Verrou verrou_;
  CourbesChoisies courbesChoisies_;
  VoletArrêt* arrêt_;
  VoletCapteurs* capteurs_;
  VoletCourbes* courbes_;
  VoletEssai* essai_ = nullptr;  ///< none where there is no test
  VoletCommandes* commandes_;
  VoletLogique* logique_;
  VoletMessages* messages_;
  QTabWidget* onglets_ = nullptr;
  QLabel* mesures_ = nullptr;
  QLabel* enregistrementMontré_ = nullptr;
  QAction* gesteEnregistre_ = nullptr;
  EnregistrementDuBureau enregistrement_;
  QTimer rafraîchissement_;
  std::function<void()> fermée_;
  bool tourDesCourbes_ = false;
  bool arrêtVu_ = false;
  std::uint64_t rafraichissementsVus_ = 0;
};

}  // namespace zuma::host
