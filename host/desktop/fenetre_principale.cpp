#include "host/desktop/fenetre_principale.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <chrono>
#include <set>
#include <utility>

#include "host/desktop/menu_cartes.h"
#include "host/desktop/volet_arret.h"
#include "host/desktop/volet_capteurs.h"
#include "host/desktop/volet_commandes.h"
#include "host/desktop/volet_courbes.h"
#include "host/desktop/volet_essai.h"
#include "host/desktop/volet_logique.h"
#include "host/desktop/volet_messages.h"

namespace zuma::host {
namespace {

// Tables and curves in turn, each five times a second: painting both at once would double the gap
// that it leaves between two passes.
constexpr std::chrono::milliseconds kTour{100};
constexpr std::size_t kCourbesAuDépart = 2;

// The first sensors of different units, so that the curves show something on any frame.
CourbesChoisies CourbesAuDépart(Chassis& chassis) {
  CourbesChoisies choisies;
  std::set<std::string> unités;
  for (const CapteurRef& capteur : *chassis.Capteurs()) {
    choisies.push_back(unités.size() < kCourbesAuDépart &&
                       unités.insert(capteur->UnitéEtalonnage()).second);
  }
  return choisies;
}

}  // namespace

FenêtrePrincipale::FenêtrePrincipale(ChassisEnMarche& marche, Battement& battement,
                                     Ref<Recueil> recueil, const Textes& textes, bool avecEssai)
    : marche_(marche),
      battement_(battement),
      recueil_(std::move(recueil)),
      textes_(textes),
      hôte_(*this, [this] { RafraîchitTout(); }),
      verrou_([this] { return marche_.LaSécurité().Déclenchée(); }),
      courbesChoisies_(CourbesAuDépart(marche.LeChassis())),
      enregistrement_(marche) {
  setObjectName("fenetrePrincipale");
  setWindowTitle(EnQt(marche.LeChassis().Nom()) + " - zuma");
  Compose();
  if (avecEssai) AjouteLEssai();
  AjouteLesMenus();
  AjouteLaBarreDEtat();
  resize(kTaille.boundedTo(screen()->availableSize()));
  connect(&rafraîchissement_, &QTimer::timeout, this, [this] { Rafraîchit(); });
  rafraîchissement_.start(kTour);
}

FenêtrePrincipale::~FenêtrePrincipale() = default;

void FenêtrePrincipale::Fait(const std::function<void()>& travail) {
  try {
    travail();
  } catch (const std::exception& e) {
    recueil_->AjouteErreur(e.what(), {});
  }
}

QWidget* FenêtrePrincipale::Cadre(std::string_view titre, QWidget* volet) {
  auto* cadre = new QGroupBox(textes_(titre));
  cadre->setObjectName("cadre" + volet->objectName());
  auto* boîte = new QVBoxLayout(cadre);
  boîte->setContentsMargins(4, 4, 4, 4);
  boîte->addWidget(volet);
  return cadre;
}

// The stop stands above everything and belongs to no splitter: nothing can fold it away.
void FenêtrePrincipale::Compose() {
  arrêt_ = new VoletArrêt(
      marche_.LaSécurité(), marche_.LeSuivi(), textes_, [this] { Arrête(); },
      [this] { return marche_.Acquitte(); });
  auto* partage = new QSplitter(Qt::Horizontal);
  partage->setObjectName("partage");
  partage->addWidget(Gauche());
  partage->addWidget(Droite());
  partage->setStretchFactor(0, 1);  // the right column keeps its width
  partage->setSizes({940, 440});
  auto* centre = new QWidget(this);
  auto* boîte = new QVBoxLayout(centre);
  boîte->addWidget(arrêt_);
  boîte->addWidget(partage, 1);
  setCentralWidget(centre);
  capteurs_->setFocus();
}

// All hear of it at once: a stop that is acknowledged before the next pass ends the test too, and
// drops what was typed.
void FenêtrePrincipale::Arrête() {
  Fait([&] { marche_.Arrête(textes_("Cause operateur").toStdString()); });
  Fait([&] {
    if (essai_ != nullptr) essai_->AprèsLaPasse(battement_.Secondes());
  });
  Fait([&] { RafraîchitTout(); });
}

QWidget* FenêtrePrincipale::Gauche() {
  Chassis& chassis = marche_.LeChassis();
  capteurs_ = new VoletCapteurs(chassis, textes_, courbesChoisies_, verrou_, hôte_);
  courbes_ = new VoletCourbes(chassis, textes_, courbesChoisies_);
  onglets_ = new QTabWidget;
  onglets_->setObjectName("onglets");
  onglets_->addTab(courbes_, textes_("Titre courbes"));
  auto* gauche = new QSplitter(Qt::Vertical);
  gauche->setObjectName("partageGauche");
  gauche->addWidget(Cadre("Titre capteurs", capteurs_));
  gauche->addWidget(onglets_);
  gauche->setSizes({490, 400});
  return gauche;
}

void FenêtrePrincipale::AjouteLEssai() {
  Chassis& chassis = marche_.LeChassis();
  if (!VoletEssai::Possible(chassis, marche_.LaSécurité())) return;
  essai_ = new VoletEssai(chassis, marche_.LaSécurité(), textes_, verrou_);
  onglets_->addTab(essai_, textes_("Titre essai"));
}

void FenêtrePrincipale::CommenceLEssai() {
  if (essai_ != nullptr) essai_->Commence();
}

void FenêtrePrincipale::MontreLOnglet(int rang) {
  onglets_->setCurrentIndex(rang);
}

QWidget* FenêtrePrincipale::Droite() {
  Chassis& chassis = marche_.LeChassis();
  commandes_ = new VoletCommandes(chassis, textes_, verrou_, hôte_);
  logique_ = new VoletLogique(chassis, textes_, verrou_);
  messages_ = new VoletMessages(recueil_, textes_);
  auto* droite = new QSplitter(Qt::Vertical);
  droite->setObjectName("partageDroite");
  droite->addWidget(Cadre("Titre commandes", commandes_));
  droite->addWidget(Cadre("Titre logique", logique_));
  droite->addWidget(Cadre("Titre messages", messages_));
  droite->setSizes({400, 370, 110});
  return droite;
}

QMenu& FenêtrePrincipale::AjouteLeMenu(std::string_view titre, const char* nom) {
  QMenu* menu = menuBar()->addMenu(textes_(titre));
  menu->setObjectName(nom);
  return *menu;
}

void FenêtrePrincipale::AjouteLesMenus() {
  QMenu& fichier = AjouteLeMenu("Menu fichier", "menuFichier");
  capteurs_->RemplitLeMenu(AjouteLeMenu("Menu capteur", "menuCapteur"));
  RemplitLeMenuDesCartes(AjouteLeMenu("Menu cartes", "menuCartes"), marche_.LeChassis(), textes_,
                         hôte_);
  QMenu& vue = AjouteLeMenu("Menu vue", "menuVue");
  const auto ajoute = [&](QMenu& menu, const char* nom, std::string_view clé,
                          const QKeySequence& touche, auto&& fait) {
    QAction* action = menu.addAction(textes_(clé), touche, this, fait);
    action->setObjectName(nom);
  };
  gesteEnregistre_ = fichier.addAction(textes_("Geste enregistre"), Qt::CTRL | Qt::Key_R, this,
                                       [this] { Fait([this] { ChangeLEnregistrement(); }); });
  gesteEnregistre_->setObjectName("gesteEnregistre");
  ajoute(fichier, "gesteQuitte", "Geste quitte", Qt::CTRL | Qt::Key_Q, [this] { close(); });
  ajoute(vue, "gesteAgrandit", "Geste agrandit", Qt::CTRL | Qt::Key_Plus,
         [this] { ChangeLaPolice(1); });
  ajoute(vue, "gesteReduit", "Geste reduit", Qt::CTRL | Qt::Key_Minus,
         [this] { ChangeLaPolice(-1); });
  ajoute(vue, "gesteOublieMesures", "Geste oublie mesures", {},
         [this] { battement_.OublieLesMesures(); });
}

void FenêtrePrincipale::AjouteLaBarreDEtat() {
  mesures_ = new QLabel;
  mesures_->setObjectName("mesures");
  auto* oublie = new QPushButton(textes_("Bouton oublie mesures"));
  oublie->setObjectName("oublieMesures");
  connect(oublie, &QPushButton::clicked, this, [this] { battement_.OublieLesMesures(); });
  enregistrementMontré_ = new QLabel;
  enregistrementMontré_->setObjectName("enregistrement");
  statusBar()->addWidget(mesures_, 1);
  statusBar()->addPermanentWidget(enregistrementMontré_);
  statusBar()->addPermanentWidget(oublie);
}

void FenêtrePrincipale::ChangeLaPolice(int points) {
  constexpr int kMinimum = 7;
  constexpr int kMaximum = 28;
  QFont police = QApplication::font();
  police.setPointSize(std::clamp(police.pointSize() + points, kMinimum, kMaximum));
  QApplication::setFont(police);
}

// A stop shows at once, and not on the next turn of the panes.
void FenêtrePrincipale::AprèsLaPasse(double secondes) {
  const std::uint64_t rafraichissements = marche_.LeChassis().RafraichissementsEA();
  if (rafraichissements != rafraichissementsVus_) courbes_->Note(secondes);
  rafraichissementsVus_ = rafraichissements;
  if (essai_ != nullptr) essai_->AprèsLaPasse(secondes);
  const bool arrêt = marche_.LaSécurité().Déclenchée();
  if (arrêt == arrêtVu_) return;
  if (arrêt) QApplication::alert(this);  // it may be minimised or covered
  RafraîchitTout();
}

void FenêtrePrincipale::Rafraîchit() {
  tourDesCourbes_ = !tourDesCourbes_;
  if (tourDesCourbes_) {
    courbes_->Rafraîchit();
    if (essai_ != nullptr) essai_->Rafraîchit();
  } else {
    RafraîchitTout();
  }
}

void FenêtrePrincipale::RafraîchitTout() {
  arrêtVu_ = marche_.LaSécurité().Déclenchée();
  arrêt_->Rafraîchit();
  capteurs_->Rafraîchit();
  commandes_->Rafraîchit();
  logique_->Rafraîchit();
  messages_->Rafraîchit();
  MontreLesMesures();
  MontreLEnregistrement();
}

void FenêtrePrincipale::MontreLesMesures() {
  const Battement::Mesures& m = battement_.LesMesures();
  mesures_->setText(textes_("Mesure passes") + " " + textes_.Nombre(m.parSeconde, 0) + "/s    " +
                    textes_("Mesure passe longue") + " " + textes_.Nombre(m.plusLonguePasse, 2) +
                    " ms    " + textes_("Mesure ecart") + " " + textes_.Nombre(m.plusLongEcart, 1) +
                    " ms");
}

// A name in use is refused behind the dialog, which therefore does not ask.
void FenêtrePrincipale::ChangeLEnregistrement() {
  if (enregistrement_.EnCours()) {
    enregistrement_.Finit();
    return;
  }
  const QString nom =
      QFileDialog::getSaveFileName(this, textes_("Titre enregistrement"), {}, "CSV (*.csv)",
                                   nullptr, QFileDialog::DontConfirmOverwrite);
  if (!nom.isEmpty()) enregistrement_.Commence(nom.toStdString());
}

void FenêtrePrincipale::MontreLEnregistrement() {
  gesteEnregistre_->setText(
      textes_(enregistrement_.EnCours() ? "Geste finit l'enregistrement" : "Geste enregistre"));
  enregistrementMontré_->setText(enregistrement_.Phrase());
  enregistrementMontré_->setStyleSheet(
      enregistrement_.EnPanne() ? "background:#c03a1e;color:white;padding:2px" : QString());
}

void FenêtrePrincipale::closeEvent(QCloseEvent* demande) {
  QMainWindow::closeEvent(demande);
  if (fermée_) fermée_();
}

void FenêtrePrincipale::Fige() {
  rafraîchissement_.stop();
  if (essai_ != nullptr) essai_->Oublie();
  enregistrement_.Finit();
}

}  // namespace zuma::host
