#include "dialogs/qt/fenetre_choix_du_port.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <chrono>

#include "base/echec.h"
#include "dialogs/qt/liste_de_choix.h"

namespace zuma::qt {
namespace {

constexpr std::chrono::milliseconds kPériode(200);
constexpr int kLargeurDeLEtat = 34;  // characters: a device path, its speed and what was found

QLabel* Texte(const char* nom) {
  auto* const étiquette = new QLabel;
  étiquette->setObjectName(nom);
  étiquette->setTextFormat(Qt::PlainText);
  étiquette->setWordWrap(true);
  étiquette->setMinimumWidth(étiquette->fontMetrics().averageCharWidth() * kLargeurDeLEtat);
  return étiquette;
}

}  // namespace

FenêtreChoixDuPort::FenêtreChoixDuPort(ChoixDuPort& feuille, const Mots& mots)
    : feuille_(feuille),
      mots_(mots),
      port_(BoîteDe(feuille.CmbListeCOM, "CmbListeCOM")),
      vitesse_(BoîteDe(feuille.CmbListeBaudrate, "CmbListeBaudrate")),
      état_(Texte("LblEtat")),
      avis_(Texte("LblAvis")),
      progrès_(new QProgressBar),
      recherche_(Bouton("BtnAutoScan", mots("Texte Bouton Recherche", "AutoScan"))),
      ferme_(Bouton("BtnClose", mots("Texte Bouton Fermer", "Close"))) {
  setWindowTitle(mots("Titre " + std::string(feuille.Nom()), feuille.Nom()));
  progrès_->setObjectName("Recherche");
  progrès_->setRange(0, 0);  // a search of unknown length
  progrès_->setTextVisible(false);
  auto* const champs = new QFormLayout(this);
  champs->addRow(mots("Texte Label Port", "Port"), port_);
  champs->addRow(mots("Texte Label Vitesse", "Speed"), vitesse_);
  champs->addRow(mots("Texte Label Etat", "State"), état_);
  champs->addRow(avis_);
  champs->addRow(progrès_);
  auto* const boutons = new QDialogButtonBox;
  boutons->addButton(recherche_, QDialogButtonBox::ActionRole);
  boutons->addButton(ferme_, QDialogButtonBox::AcceptRole);
  champs->addRow(boutons);
  ferme_->setDefault(true);
  connect(recherche_, &QPushButton::clicked, this, [this] { Cherche(); });
  connect(ferme_, &QPushButton::clicked, this, [this] { accept(); });
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (!feuille_.Visible()) accept();
  });
  timer_.start(kPériode);
  MontreLaRecherche(false);
  if (feuille.CmbListeCOM.textes.empty()) {
    avis_->setText(mots("Texte aucun port", "This machine has no serial port."));
  }
  Relit();
}

QPushButton* FenêtreChoixDuPort::Bouton(const char* nom, const QString& texte) {
  auto* const bouton = new QPushButton("&" + texte, this);
  bouton->setObjectName(nom);
  return bouton;
}

void FenêtreChoixDuPort::Relit() {
  qt::Relit(*port_, feuille_.CmbListeCOM);
  qt::Relit(*vitesse_, feuille_.CmbListeBaudrate);
  état_->setText(EnQt(feuille_.LblEtat));
}

// The room of the bar stays, so that nothing moves under the pointer.
void FenêtreChoixDuPort::MontreLaRecherche(bool enCours) {
  QSizePolicy place = progrès_->sizePolicy();
  place.setRetainSizeWhenHidden(true);
  progrès_->setSizePolicy(place);
  progrès_->setVisible(enCours);
  recherche_->setEnabled(!enCours);
  port_->setEnabled(!enCours);
  vitesse_->setEnabled(!enCours);
}

// The search runs inside this click, and events are served between its tries. The window outlives
// it: `exec` returns behind it only.
void FenêtreChoixDuPort::Cherche() {
  MontreLaRecherche(true);
  avis_->setText(mots_("Texte recherche en cours", "Searching for the instrument..."));
  QString avis;
  try {
    feuille_.BtnAutoScan();
    if (feuille_.LblEtat.empty()) {
      avis = mots_("Texte recherche vaine", "No instrument answered on any port.");
    }
  } catch (...) {
    feuille_.LblEtat.clear();
    avis = EnQt(EchecCourant(0).Description());
  }
  avis_->setText(avis);
  MontreLaRecherche(false);
  Relit();
}

void FenêtreChoixDuPort::done(int résultat) {
  feuille_.BtnClose();
  QDialog::done(résultat);
}

}  // namespace zuma::qt
