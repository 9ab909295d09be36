#include "dialogs/qt/fenetre_etalonnage.h"

#include <QPushButton>

namespace zuma::qt {
namespace {

constexpr double kGrossissement = 1.6;  // of the live values, read from beside the machine
constexpr int kLignesDeCommentaire = 3;

QLabel* Etiquette(const char* nom, const QString& texte) {
  auto* const étiquette = new QLabel(texte);
  étiquette->setObjectName(nom);
  étiquette->setTextFormat(Qt::PlainText);
  return étiquette;
}

void Grossit(QLabel& étiquette, double fois) {
  QFont police = étiquette.font();
  police.setPointSizeF(police.pointSizeF() * fois);
  police.setBold(true);
  étiquette.setFont(police);
}

FenêtreDeFeuille::Suivi SuiviDe(const Ref<FeuilleEtalonnage>& feuille) {
  return {[feuille] { return feuille->Visible(); }, [feuille] { feuille->Timer1(); },
          FeuilleEtalonnage::kPériode, [feuille] { feuille->Ferme(); }};
}

}  // namespace

FenêtreEtalonnage::FenêtreEtalonnage(const Ref<FeuilleEtalonnage>& feuille, const Mots& mots,
                                     const Refus& refus)
    : FenêtreDeFeuille(SuiviDe(feuille), mots, refus),
      feuille_(feuille),
      nom_(Etiquette("Lbl_Nom_Interne_Cpt", {})),
      champs_(new QFormLayout),
      valeurs_(new QVBoxLayout),
      grille_(new GrilleEtalonnage(feuille, mots, this)),
      commentaire_(new QPlainTextEdit) {
  Grossit(*nom_, 1);
  nom_->setWordWrap(true);
  commentaire_->setObjectName("CommentaireEtalonnage");
  commentaire_->setReadOnly(true);
  commentaire_->setTabChangesFocus(true);
  commentaire_->setMinimumHeight(commentaire_->fontMetrics().height() * kLignesDeCommentaire);
  auto* const tout = new QVBoxLayout(this);
  tout->addWidget(nom_);
  tout->addLayout(champs_);
  tout->addLayout(Milieu(), 1);
  tout->addLayout(Boutons());
  grille_->setFocus();
}

QLayout* FenêtreEtalonnage::Milieu() {
  auto* const droite = new QVBoxLayout;
  QLabel* const légende = Etiquette("LegendeCommentaire", Légende("Commentaire"));
  légende->setBuddy(commentaire_);
  droite->addLayout(valeurs_);
  droite->addStretch(1);
  droite->addWidget(légende);
  droite->addWidget(commentaire_, 1);
  auto* const milieu = new QHBoxLayout;
  milieu->addWidget(grille_, 3);
  milieu->addLayout(droite, 2);
  return milieu;
}

// No button answers to Enter from elsewhere: that key belongs to the cell being edited.
QLayout* FenêtreEtalonnage::Boutons() {
  auto* const rangée = new QHBoxLayout;
  rangée->addStretch(1);
  const auto ajoute = [&](const char* nom, std::string_view clé,
                          void (FeuilleEtalonnage::*action)(), auto fais) {
    auto* const bouton = new QPushButton("&" + Légende(clé));
    bouton->setObjectName(nom);
    bouton->setAutoDefault(true);  // Enter presses it while it has the focus
    rangée->addWidget(bouton);
    boutons_.push_back(bouton);
    connect(bouton, &QPushButton::clicked, this, [this, action, fais] {
      const Ref<FeuilleEtalonnage> feuille = feuille_;
      (this->*fais)([feuille, action] { (*feuille.*action)(); },
                    LesMots()("Texte etalonnage non enregistré",
                              "Nothing was saved. What was typed is kept in the window."));
    });
  };
  ajoute("BtnOK", "OK", &FeuilleEtalonnage::BtnOK, &FenêtreEtalonnage::FaisSiPermis);
  ajoute("BtnCancel", "Annuler", &FeuilleEtalonnage::BtnCancel, &FenêtreEtalonnage::Fais);
  return rangée;
}

void FenêtreEtalonnage::Enchaîne(std::vector<QWidget*> champs,
                                 const std::vector<QWidget*>& sousLesValeurs) {
  champs.push_back(grille_);
  champs.insert(champs.end(), sousLesValeurs.begin(), sousLesValeurs.end());
  champs.push_back(commentaire_);
  champs.insert(champs.end(), boutons_.begin(), boutons_.end());
  for (std::size_t i = 1; i < champs.size(); ++i) setTabOrder(champs[i - 1], champs[i]);
}

void FenêtreEtalonnage::AjouteChamp(const char* nomDeLégende, std::string_view clé,
                                    QWidget* champ) {
  QLabel* const légende = Etiquette(nomDeLégende, Légende(clé));
  légende->setBuddy(champ);
  champs_->addRow(légende, champ);
}

QLabel* FenêtreEtalonnage::AjouteValeur(const char* nomDeLégende, std::string_view clé,
                                        const char* nom) {
  valeurs_->addWidget(Etiquette(nomDeLégende, Légende(clé)));
  QLabel* const valeur = Etiquette(nom, {});
  Grossit(*valeur, kGrossissement);
  valeur->setAccessibleName(Légende(clé));
  valeur->setMinimumWidth(valeur->fontMetrics().horizontalAdvance("-000000"));
  valeurs_->addWidget(valeur);
  return valeur;
}

void FenêtreEtalonnage::Affiche(QLabel& où, const std::string& valeur, bool sûre) {
  où.setText(sûre ? EnQt(valeur) : QString("?"));
}

void FenêtreEtalonnage::Relit() {
  setWindowTitle(EnQt(feuille_->Titre()));
  nom_->setText(EnQt(feuille_->Lbl_Nom_Interne_Cpt()));
  const QString commentaire = EnQt(feuille_->CommentaireEtalonnage());
  if (commentaire_->toPlainText() != commentaire) commentaire_->setPlainText(commentaire);
  grille_->Relit();
}

}  // namespace zuma::qt
