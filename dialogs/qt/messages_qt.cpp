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

void MessagesQt::Montre(std::string_view texte, const ObjetConcerné& objet) {
  QStringList titre;
  for (const std::string_view mot : {objet.classe, objet.clé, objet.nom}) {
    if (!mot.empty()) titre << EnQt(mot);
  }
  if (qApp == nullptr) {
    qWarning("[%s] %s", qPrintable(titre.join(' ')), qPrintable(EnQt(texte)));
    return;
  }
  Annonce(mots_, titre.join(' '), EnQt(texte));
}

}  // namespace zuma::qt
