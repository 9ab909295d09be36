#include "dialogs/qt/liste_de_choix.h"

#include <QEvent>
#include <QSignalBlocker>

#include "dialogs/qt/mots.h"

namespace zuma::qt {
namespace {

// An open list has its wheel in a window of its own.
class Filtre final : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* objet, QEvent* événement) override {
    if (événement->type() != QEvent::Wheel) return QObject::eventFilter(objet, événement);
    événement->ignore();  // for what stands behind
    return true;
  }
};

}  // namespace

void SansMolette(QWidget& boîte) {
  boîte.installEventFilter(new Filtre(&boîte));
}

QComboBox* BoîteDe(ListeDeChoix& liste, const char* nom) {
  auto* const boîte = new QComboBox;
  boîte->setObjectName(nom);
  boîte->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  SansMolette(*boîte);
  QObject::connect(boîte, &QComboBox::currentIndexChanged, boîte, [&liste](int rang) {
    liste.choisi = rang < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(rang));
  });
  return boîte;
}

void Relit(QComboBox& boîte, const ListeDeChoix& liste) {
  QStringList textes;
  for (const std::string& texte : liste.textes) textes << (texte.empty() ? "–" : EnQt(texte));
  QStringList montrés;
  for (int i = 0; i < boîte.count(); ++i) montrés << boîte.itemText(i);
  const QSignalBlocker muette(boîte);  // what comes from the list does not go back to it
  if (textes != montrés) {
    boîte.clear();
    boîte.addItems(textes);
  }
  boîte.setCurrentIndex(liste.choisi ? static_cast<int>(*liste.choisi) : -1);
}

}  // namespace zuma::qt
