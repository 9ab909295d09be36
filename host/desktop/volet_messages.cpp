#include "host/desktop/volet_messages.h"

#include <QHeaderView>
#include <QTime>
#include <array>
#include <utility>

namespace zuma::host {
namespace {

// In the order of `Origine`.
constexpr std::array<std::string_view, 4> kOrigines{"Origine fichier", "Origine donnee",
                                                    "Origine message", "Origine echec"};

}  // namespace

VoletMessages::VoletMessages(Ref<Recueil> recueil, const Textes& textes)
    : recueil_(std::move(recueil)), textes_(textes) {
  setObjectName("voletMessages");
  setRootIsDecorated(true);
  setUniformRowHeights(false);
  setTabKeyNavigation(false);
  setHeaderLabels({textes("Colonne heure"), textes("Colonne origine"), textes("Colonne message")});
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  header()->setStretchLastSection(false);  // a long message scrolls, and is not cut
  setTextElideMode(Qt::ElideNone);
  Rafraîchit();
}

bool VoletMessages::Rafraîchit() {
  const std::vector<Problème>& tous = recueil_->Problèmes();
  if (montrés_ == tous.size()) return false;
  while (montrés_ < tous.size()) Ajoute(tous[montrés_++]);
  scrollToBottom();
  return true;
}

// The first line, and under it the variables of a failure.
void VoletMessages::Ajoute(const Problème& problème) {
  QString texte = EnQt(problème.texte);
  const qsizetype fin = texte.indexOf('\n');
  const QString suite = fin < 0 ? QString() : texte.mid(fin + 1);
  if (fin >= 0) texte.truncate(fin);
  if (!problème.objet.empty()) texte = EnQt(problème.objet) + ": " + texte;
  const std::string_view origine = kOrigines[static_cast<std::size_t>(problème.origine)];
  auto* ligne = new QTreeWidgetItem(
      this, {QTime::currentTime().toString("HH:mm:ss"), textes_(origine), texte});
  for (int colonne = 0; colonne < 3; ++colonne) {
    ligne->setTextAlignment(colonne, Qt::AlignTop | Qt::AlignLeft);
  }
  ligne->setToolTip(2, EnQt(problème.texte));
  for (const QString& variable : suite.split('\n', Qt::SkipEmptyParts)) {
    new QTreeWidgetItem(ligne, {{}, {}, variable.trimmed()});
  }
}

}  // namespace zuma::host
