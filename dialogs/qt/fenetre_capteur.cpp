#include "dialogs/qt/fenetre_capteur.h"

namespace zuma::qt {
namespace {

// Text and cursor of a field that already holds it stay as they are.
void Reprend(QLineEdit& champ, const std::string& texte) {
  if (champ.text() != EnQt(texte)) champ.setText(EnQt(texte));
}

}  // namespace

FenêtreCapteur::FenêtreCapteur(const Ref<Cpt_Normal_Extrn_Calibration>& feuille, const Mots& mots,
                               const Refus& refus)
    : FenêtreEtalonnage(feuille, mots, refus),
      feuille_(feuille),
      nomAffiché_(Champ("TxtNomAffiche", &Cpt_Normal_Extrn_Calibration::TxtNomAffiche)),
      unité_(Champ("TxtUnite", &Cpt_Normal_Extrn_Calibration::TxtUnite)),
      brute_(AjouteValeur("LegendeValeurBrute", "Valeur brute", "LblValeurBrute")),
      courante_(AjouteValeur("LegendeValeurCourante", "Valeur courante", "LblValeurCourante")),
      saisie_(AjouteValeur("LegendeValeurSaisie", "Valeur avec cette table", "LblValeurSaisie")),
      tare_(new QCheckBox(Légende("Tare"))) {
  AjouteChamp("LegendeNomAffiche", "Nom affiché", nomAffiché_);
  AjouteChamp("LegendeUnite", "Unité", unité_);
  AjouteSousLesValeurs(tare_);
  tare_->setObjectName("ChkTare");
  Enchaîne({nomAffiché_, unité_}, {tare_});
  connect(tare_, &QCheckBox::clicked, this, [this](bool cochée) {
    const Ref<Cpt_Normal_Extrn_Calibration> capteur = feuille_;
    FaisSiPermis([capteur, cochée] { capteur->ChkTare(cochée); },
                 LesMots()("Texte tare impossible", "The tare could not be changed."));
  });
}

QLineEdit* FenêtreCapteur::Champ(const char* nom,
                                 std::string Cpt_Normal_Extrn_Calibration::* texte) {
  auto* const champ = new QLineEdit;
  champ->setObjectName(nom);
  connect(champ, &QLineEdit::textEdited, this,
          [this, texte](const QString& saisi) { (*feuille_).*texte = saisi.toStdString(); });
  return champ;
}

void FenêtreCapteur::Relit() {
  FenêtreEtalonnage::Relit();
  Reprend(*nomAffiché_, feuille_->TxtNomAffiche);
  Reprend(*unité_, feuille_->TxtUnite);
  tare_->setChecked(feuille_->ChkTare());
}

void FenêtreCapteur::AfficheLesValeurs(bool sûres) {
  Affiche(*brute_, feuille_->LblValeurBrute(), sûres);
  Affiche(*courante_, feuille_->LblValeurCourante(), sûres);
  Affiche(*saisie_, feuille_->LblValeurSaisie(), sûres);
}

}  // namespace zuma::qt
