#include "dialogs/qt/messages_qt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>

#include "dialogs/qt/proprietaire.h"

namespace zuma::qt {

void Annonce(const Mots& mots, const QString& titre, const QString& texte, const QString& suite) {
  QMessageBox boîte(QMessageBox::Warning, titre, texte);
  boîte.setObjectName("BoiteDeMessage");
  boîte.setTextFormat(Qt::PlainText);
  boîte.setInformativeText(suite);
  QPushButton* const bouton = boîte.addButton(mots("OK", "OK"), QMessageBox::AcceptRole);
  boîte.setDefaultButton(bouton);
  boîte.setEscapeButton(bouton);
  MontreAuDessus(boîte);
}

namespace {

QString Titre(const ObjetConcerné& objet) {
  QStringList titre;
  for (const std::string_view mot : {objet.classe, objet.clé, objet.nom}) {
    if (!mot.empty()) titre << EnQt(mot);
  }
  return titre.join(' ');
}

void EcritSurLErreur(std::string_view texte, const ObjetConcerné& objet) {
  qWarning("[%s] %s", qPrintable(Titre(objet)), qPrintable(EnQt(texte)));
}

}  // namespace

void MessagesQt::Montre(std::string_view texte, const ObjetConcerné& objet) {
  if (qApp == nullptr) {
    EcritSurLErreur(texte, objet);
    return;
  }
  Annonce(mots_, Titre(objet), EnQt(texte));
}

bool MessagesQt::AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) {
  if (fois == 1) EcritSurLErreur(texte, objet);
  return fois < kPatience;
}

}  // namespace zuma::qt
