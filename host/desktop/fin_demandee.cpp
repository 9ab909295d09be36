#include "host/desktop/fin_demandee.h"

#include <QApplication>
#include <QDialog>
#include <chrono>

#include "host/interruption.h"

namespace zuma::host {
namespace {

constexpr std::chrono::milliseconds kRegard{50};

// Loops that begin later end at once, until the program's own one begins.
void Finit() {
  if (!Interruption::Demandée()) return;
  QCoreApplication::exit();
  for (QWidget* fenêtre : QApplication::topLevelWidgets()) {
    auto* dialogue = qobject_cast<QDialog*>(fenêtre);
    if (dialogue != nullptr && dialogue->isVisible()) dialogue->reject();
  }
}

}  // namespace

FinDemandée::FinDemandée() {
  QObject::connect(&regard_, &QTimer::timeout, &regard_, &Finit);
  regard_.start(kRegard);
}

}  // namespace zuma::host
