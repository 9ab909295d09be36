#include "dialogs/qt/proprietaire.h"

#include <QApplication>
#include <QDialog>
#include <QWindow>
#include <algorithm>

#include "platform/fenetres.h"

namespace zuma::qt {
namespace {

// The window of that handle, of this program or, where the window system allows it, of another. A
// foreign one is wrapped, and the wrapping ends with `fenêtre`.
QWindow* FenêtreDuSystème(WId poignée, const QWidget& fenêtre) {
  const QWindowList miennes = QGuiApplication::allWindows();
  const auto trouvée = std::ranges::find_if(
      miennes, [&](const QWindow* w) { return w->handle() != nullptr && w->winId() == poignée; });
  if (trouvée != miennes.end()) return *trouvée;
  QWindow* const étrangère = QWindow::fromWinId(poignée);
  if (étrangère != nullptr) {
    QObject::connect(&fenêtre, &QObject::destroyed, étrangère, [étrangère] { delete étrangère; });
  }
  return étrangère;
}

void PlaceAuDessus(QWidget& fenêtre, QWindow* dessous) {
  (void)fenêtre.winId();  // makes the window of the system, which is what can be placed
  fenêtre.windowHandle()->setTransientParent(dessous);
}

}  // namespace

void Possède(QWidget& fenêtre, FenêtreHôte* mère) {
  const auto poignée = static_cast<WId>(mère != nullptr ? mère->hwnd() : 0);
  QWidget* const widget = poignée != 0 ? QWidget::find(poignée) : nullptr;
  if (fenêtre.parentWidget() != widget) fenêtre.setParent(widget, fenêtre.windowFlags());
  if (widget == nullptr) {
    PlaceAuDessus(fenêtre, poignée != 0 ? FenêtreDuSystème(poignée, fenêtre) : nullptr);
  }
}

// The dialog is no child of the window that is active: that one may end in the meantime.
void MontreAuDessus(QDialog& dialogue) {
  dialogue.setWindowModality(Qt::ApplicationModal);
  const QWidget* const active = QApplication::activeWindow();
  if (active != nullptr) PlaceAuDessus(dialogue, active->windowHandle());
  (void)dialogue.exec();
}

}  // namespace zuma::qt
