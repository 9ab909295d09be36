#include "host/desktop/boite_de_depart.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "dialogs/qt/proprietaire.h"

namespace zuma::host {
namespace {

constexpr QSize kTaille{760, 420};

// A list of any length, in a window no larger than its screen.
class BoîteDeDépart : public QDialog {
 public:
  BoîteDeDépart(const QString& texte, const std::string& liste) {
    setObjectName("boiteDeDepart");
    setWindowTitle("zuma");
    resize(kTaille);
    auto* colonne = new QVBoxLayout(this);
    auto* phrase = new QLabel(texte);
    phrase->setTextFormat(Qt::PlainText);
    phrase->setWordWrap(true);
    colonne->addWidget(phrase);
    auto* lignes = new QPlainTextEdit(EnQt(liste));
    lignes->setObjectName("listeDuDepart");
    lignes->setReadOnly(true);
    lignes->setTabChangesFocus(true);
    colonne->addWidget(lignes);
    colonne->addWidget(boutons_);
    connect(boutons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(boutons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  }
  void Ajoute(const char* nom, const QString& texte, QDialogButtonBox::ButtonRole rôle) {
    QPushButton* const bouton = boutons_->addButton(texte, rôle);
    bouton->setObjectName(nom);
    bouton->setAutoDefault(false);
    if (rôle != QDialogButtonBox::RejectRole) return;
    bouton->setDefault(true);
    bouton->setFocus();
  }

 private:
  QDialogButtonBox* boutons_ = new QDialogButtonBox;
};

}  // namespace

bool DemandeLeDépart(const DépartRefusé& refus, const Textes& textes) {
  BoîteDeDépart boîte(textes("Texte depart"), refus.Liste());
  boîte.Ajoute("lance", textes("Bouton lance"), QDialogButtonBox::AcceptRole);
  boîte.Ajoute("neLancePas", textes("Bouton ne lance pas"), QDialogButtonBox::RejectRole);
  qt::MontreAuDessus(boîte);
  return boîte.result() == QDialog::Accepted;
}

void MontreLeRefus(const DépartRefusé& refus) {
  BoîteDeDépart boîte({}, refus.what());
  boîte.Ajoute("neLancePas", "OK", QDialogButtonBox::RejectRole);
  qt::MontreAuDessus(boîte);
}

}  // namespace zuma::host
