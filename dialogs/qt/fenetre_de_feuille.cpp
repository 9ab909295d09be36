#include "dialogs/qt/fenetre_de_feuille.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPointer>
#include <optional>
#include <utility>
#include <vector>

#include "base/echec.h"
#include "dialogs/qt/messages_qt.h"
#include "dialogs/qt/proprietaire.h"

namespace zuma::qt {
namespace {

constexpr double kMillisecondes = 1000;

// No exception may cross the event loop of the toolkit.
std::optional<Echec> Tente(const std::function<void()>& action) {
  try {
    action();
  } catch (...) {
    return EchecCourant(0);
  }
  return {};
}

QString Texte(const Echec& échec) {
  return QString("Erreur N°%1 (%2)").arg(échec.NuméroErreur()).arg(EnQt(échec.Description()));
}

// An application that ends leaves its windows unusable, and undeletable: they go before.
void FermeTout() {
  std::vector<FenêtreDeFeuille*> fenêtres;
  for (QWidget* widget : QApplication::allWidgets()) {
    if (auto* const fenêtre = dynamic_cast<FenêtreDeFeuille*>(widget)) fenêtres.push_back(fenêtre);
  }
  for (const FenêtreDeFeuille* fenêtre : fenêtres) delete fenêtre;
}

}  // namespace

FenêtreDeFeuille::FenêtreDeFeuille(Suivi suivi, Mots mots, Refus refus)
    : QWidget(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      suivi_(std::move(suivi)),
      mots_(std::move(mots)),
      refus_(std::move(refus)) {
  qRemovePostRoutine(&FermeTout);  // once, whatever the number of windows
  qAddPostRoutine(&FermeTout);
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_QuitOnClose, false);  // the host's own windows decide when the program ends
  connect(&timer_, &QTimer::timeout, this, [this] { Tic(); });
  timer_.start(static_cast<int>(suivi_.période * kMillisecondes));
}

FenêtreDeFeuille::~FenêtreDeFeuille() {
  Quitte();
}

void FenêtreDeFeuille::Présente(FenêtreHôte* mère) {
  Relit();
  AfficheLesValeurs(true);
  Possède(*this, mère);
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void FenêtreDeFeuille::Tic() {
  if (!suivi_.montrée()) {
    close();
    return;
  }
  AfficheLesValeurs(!Tente(suivi_.timer));
}

// What an action calls may open a message box: by the time it returns, the host's window, and this
// one with it, may be gone.
void FenêtreDeFeuille::Fais(const std::function<void()>& action, const QString& échec) {
  const QPointer<FenêtreDeFeuille> moi(this);
  const Mots mots = mots_;
  const QString titre = windowTitle();
  const std::optional<Echec> raison = Tente(action);
  if (moi && !suivi_.montrée()) {
    close();
  } else if (moi) {
    Relit();
  }
  if (raison) Annonce(mots, titre, échec, Texte(*raison));
}

// A box that was pressed shows the form's state again.
void FenêtreDeFeuille::FaisSiPermis(const std::function<void()>& action, const QString& échec) {
  const QString refus = refus_ ? refus_() : QString();
  if (refus.isEmpty()) return Fais(action, échec);
  Relit();
  Annonce(Mots(mots_), windowTitle(), échec, refus);
}

void FenêtreDeFeuille::Quitte() {
  timer_.stop();
  if (!std::exchange(partie_, true)) suivi_.fermée();
}

void FenêtreDeFeuille::closeEvent(QCloseEvent* événement) {
  Quitte();
  événement->accept();
}

}  // namespace zuma::qt
