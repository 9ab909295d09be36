#include "dialogs/qt/fenetre_conditionneur.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPainter>
#include <QPushButton>

namespace zuma::qt {
namespace {

constexpr std::size_t kDrapeauxParRangée = 3;
constexpr int kLargeurDuPort = 52;  // characters of the longest settings
constexpr std::array<QRgb, 3> kCouleurs{qRgb(255, 255, 255), qRgb(40, 160, 70), qRgb(200, 40, 40)};

QLabel* Etiquette(const char* nom) {
  auto* const étiquette = new QLabel;
  étiquette->setObjectName(nom);
  étiquette->setTextFormat(Qt::PlainText);
  return étiquette;
}

QPixmap Disque(const QLabel& étiquette, QColor couleur) {
  const int taille = étiquette.fontMetrics().ascent();
  const qreal finesse = étiquette.devicePixelRatioF();
  QPixmap image(QSize(taille, taille) * finesse);
  image.setDevicePixelRatio(finesse);
  image.fill(Qt::transparent);
  QPainter peintre(&image);
  peintre.setRenderHint(QPainter::Antialiasing);
  peintre.setPen(étiquette.palette().color(QPalette::WindowText));
  peintre.setBrush(couleur);
  peintre.drawEllipse(QRectF(0.5, 0.5, taille - 1, taille - 1));
  return image;
}

FenêtreDeFeuille::Suivi SuiviDe(FeuilleConditionneurNumerique& feuille) {
  return {[&feuille] { return feuille.Chargée(); }, [&feuille] { feuille.Timer(); },
          FeuilleConditionneurNumerique::kPériode, [&feuille] { feuille.BtnQuitter(); }};
}

}  // namespace

FenêtreConditionneur::FenêtreConditionneur(FeuilleConditionneurNumerique& feuille, const Mots& mots)
    : FenêtreDeFeuille(SuiviDe(feuille), mots), feuille_(feuille) {
  auto* const tout = new QVBoxLayout(this);
  cadres_ = {Communication(), Module(), Valeurs()};
  for (QGroupBox* cadre : cadres_) tout->addWidget(cadre);
  tout->addStretch(1);
  tout->addLayout(Boutons());
}

QGroupBox* FenêtreConditionneur::Communication() {
  auto* const cadre = new QGroupBox;
  cadre->setObjectName("FrameCommunication");
  légendes_[0] = Etiquette("LblCOMDetails");
  légendes_[1] = Etiquette("LblPortTrouve");
  com_ = Etiquette("LblCOM");
  com_->setWordWrap(true);
  com_->setMinimumWidth(com_->fontMetrics().averageCharWidth() * kLargeurDuPort);
  auto* const grille = new QGridLayout(cadre);
  grille->addWidget(légendes_[0], 0, 0, 1, 2);
  grille->addWidget(légendes_[1], 1, 0);
  grille->addWidget(com_, 1, 1);
  grille->setColumnStretch(1, 1);
  return cadre;
}

FenêtreConditionneur::Témoin FenêtreConditionneur::Ajoute(QBoxLayout& où, const char* nom) {
  const Témoin témoin{Etiquette(""), Etiquette(nom)};
  auto* const rangée = new QHBoxLayout;
  rangée->addWidget(témoin.disque);
  rangée->addWidget(témoin.texte, 1);
  où.addLayout(rangée);
  return témoin;
}

QGroupBox* FenêtreConditionneur::Module() {
  auto* const cadre = new QGroupBox;
  cadre->setObjectName("FrameEtatModule");
  auto* const tout = new QVBoxLayout(cadre);
  lampe_ = Ajoute(*tout, "LampeInitialise");
  lampe_.disque->setObjectName("DisqueInitialise");
  légendes_[2] = Etiquette("LblDetailsModule");
  tout->addWidget(légendes_[2]);
  auto* const grille = new QGridLayout;
  for (std::size_t i = 0; i < kDrapeaux; ++i) {
    auto* const place = new QHBoxLayout;
    drapeaux_[i] = Ajoute(*place, ("Drapeau" + std::to_string(i)).c_str());
    grille->addLayout(place, static_cast<int>(i / kDrapeauxParRangée),
                      static_cast<int>(i % kDrapeauxParRangée));
  }
  tout->addLayout(grille);
  return cadre;
}

QGroupBox* FenêtreConditionneur::Valeurs() {
  auto* const cadre = new QGroupBox;
  cadre->setObjectName("FrameValeurs");
  auto* const grille = new QGridLayout(cadre);
  for (std::size_t i = 0; i < kValeurs; ++i) {
    noms_[i] = Etiquette("");
    valeurs_[i] = Etiquette(("LblValeur" + std::to_string(i + 1)).c_str());
    QFont police = valeurs_[i]->font();
    police.setBold(true);
    valeurs_[i]->setFont(police);
    grille->addWidget(noms_[i], static_cast<int>(i), 0);
    grille->addWidget(valeurs_[i], static_cast<int>(i), 1);
  }
  grille->setColumnStretch(1, 1);
  return cadre;
}

QLayout* FenêtreConditionneur::Boutons() {
  auto* const rangée = new QHBoxLayout;
  rangée->addStretch(1);
  const auto ajoute = [&](const char* nom, void (FeuilleConditionneurNumerique::*action)()) {
    auto* const bouton = new QPushButton;
    bouton->setObjectName(nom);
    bouton->setAutoDefault(true);
    rangée->addWidget(bouton);
    connect(bouton, &QPushButton::clicked, this, [this, action] {
      FeuilleConditionneurNumerique& feuille = feuille_;
      Fais([&feuille, action] { (feuille.*action)(); },
           LesMots()("Texte reconnexion impossible", "The port could not be opened again."));
    });
    return bouton;
  };
  using F = FeuilleConditionneurNumerique;
  boutons_ = {ajoute("BtnRetryConnection", &F::BtnRetryConnection),
              ajoute("BtnInitialise", &F::BtnInitialise), ajoute("BtnQuitter", &F::BtnQuitter)};
  return rangée;
}

void FenêtreConditionneur::Relit() {
  setWindowTitle(Texte(Element::Titre));
  cadres_[0]->setTitle(Texte(Element::CadreCommunication));
  cadres_[1]->setTitle(Texte(Element::CadreEtatModule));
  cadres_[2]->setTitle(Texte(Element::CadreValeurs));
  légendes_[0]->setText(Texte(Element::DétailsCOM));
  légendes_[1]->setText(Texte(Element::PortTrouvé));
  légendes_[2]->setText(Texte(Element::DétailsModule));
  for (std::size_t i = 0; i < kValeurs; ++i) {
    noms_[i]->setText(Texte(Element::ValeurDuCanal) + QString(" %1").arg(i + 1));
  }
  boutons_[0]->setText("&" + Texte(Element::BoutonRetryConnection));
  boutons_[1]->setText("&" + Texte(Element::BoutonInitialise));
  boutons_[2]->setText("&" + Texte(Element::BoutonQuitter));
}

// Filled or hollow, and words: the colour alone tells nothing.
void FenêtreConditionneur::Montre(const Témoin& témoin, Etat état, const QString& texte) {
  if (témoin.texte->text() == texte && !témoin.disque->pixmap(Qt::ReturnByValue).isNull()) return;
  témoin.disque->setPixmap(
      Disque(*témoin.disque, QColor(kCouleurs[static_cast<std::size_t>(état)])));
  témoin.texte->setText(texte);
}

void FenêtreConditionneur::AfficheLesValeurs(bool sûres) {
  const FeuilleConditionneurNumerique::Affichage& vue = feuille_.LAffichage();
  const QString oui = LesMots()("Texte Oui", "yes");
  const QString non = LesMots()("Texte Non", "no");
  com_->setText(sûres ? EnQt(vue.com) : "?");
  const bool verte = vue.lampe == FeuilleConditionneurNumerique::Lampe::Verte && sûres;
  Montre(lampe_, verte ? Etat::Bon : Etat::Mauvais,
         QString("%1: %2").arg(Texte(Element::Initialisé), verte ? oui : non));
  for (std::size_t i = 0; i < kDrapeaux; ++i) {
    const auto& [nom, levé] = vue.drapeaux[i];
    Montre(drapeaux_[i], levé ? Etat::Mauvais : Etat::Eteint,
           QString("%1: %2").arg(EnQt(nom), levé ? oui : non));
  }
  for (std::size_t i = 0; i < kValeurs; ++i) {
    valeurs_[i]->setText(sûres ? EnQt(vue.valeurs[i]) : "?");
  }
}

}  // namespace zuma::qt
