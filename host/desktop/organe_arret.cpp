#include "host/desktop/organe_arret.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLayout>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace zuma::host {
namespace {

constexpr auto kRouge =
    "QPushButton { background: #c00018; color: white; font-weight: bold; font-size: 18pt;"
    " padding: 6px 26px; border: 3px solid #700010; border-radius: 6px; }"
    "QPushButton:pressed { background: #800010; }"
    "QPushButton:focus { border-color: black; }";

bool EstUnDialogue(const QWidget& fenêtre) {
  return fenêtre.isWindow() && fenêtre.windowType() == Qt::Dialog && fenêtre.layout() != nullptr &&
         fenêtre.layout()->menuBar() == nullptr;
}

}  // namespace

OrganeDArrêt::OrganeDArrêt(const Textes& textes, Actes actes)
    : textes_(textes), actes_(std::move(actes)) {
  qApp->installEventFilter(this);
}

OrganeDArrêt::~OrganeDArrêt() {
  qApp->removeEventFilter(this);
}

// Pressed, and not clicked: a pointer that slips off before its release must not undo a stop.
QPushButton* OrganeDArrêt::Bouton(QWidget* mère) {
  std::erase_if(boutons_, [](const auto& bouton) { return !bouton; });
  auto* bouton = new QPushButton(
      textes_("Bouton arret") + " (" + QKeySequence(kTouche).toString() + ")", mère);
  bouton->setStyleSheet(kRouge);
  connect(bouton, &QPushButton::pressed, this, [this] { Presse(); });
  connect(bouton, &QPushButton::released, this, [this] { actes_.changé(); });
  boutons_.push_back(bouton);
  return bouton;
}

bool OrganeDArrêt::Tenu() const {
  return toucheTenue_ || sourisTenue_ ||
         std::ranges::any_of(boutons_, [](const auto& b) { return b && b->isDown(); });
}

void OrganeDArrêt::Presse() {
  actes_.arrête();
  actes_.changé();
}

// A repeated press fires only what nothing holds any more: its first press has fired already, but a
// stop that was acknowledged since, while this program did not see the key, is asked for again.
void OrganeDArrêt::Touche(bool enfoncée, bool répétée) {
  if (répétée && !enfoncée) return;  // half of a repetition, on some window systems
  toucheTenue_ = enfoncée;
  if (enfoncée && (!répétée || !actes_.déclenchée())) return Presse();
  actes_.changé();
}

// An open menu takes the click that closes it, and on some window systems nobody else gets it.
void OrganeDArrêt::ClicSousUnMenu(const QPoint& où) {
  const QWidget* menu = QApplication::activePopupWidget();
  if (menu == nullptr || menu->frameGeometry().contains(où)) return;
  for (const QPointer<QPushButton>& bouton : boutons_) {
    if (!bouton || !bouton->isVisible()) continue;
    if (!bouton->rect().contains(bouton->mapFromGlobal(où))) continue;
    sourisTenue_ = true;
    return Presse();
  }
}

// Above all that the dialog holds, whatever its layout; no key of the dialog reaches it.
void OrganeDArrêt::Equipe(QObject& objet) {
  auto* fenêtre = qobject_cast<QWidget*>(&objet);
  if (fenêtre == nullptr || !EstUnDialogue(*fenêtre)) return;
  QPushButton* bouton = Bouton(fenêtre);
  bouton->setObjectName("arretDuDialogue");
  bouton->setFocusPolicy(Qt::NoFocus);
  bouton->setAutoDefault(false);
  fenêtre->layout()->setMenuBar(bouton);
}

void OrganeDArrêt::LâcheLaSouris() {
  sourisTenue_ = false;
  actes_.changé();
}

bool OrganeDArrêt::eventFilter(QObject* objet, QEvent* évènement) {
  switch (évènement->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
      const auto& touche = static_cast<const QKeyEvent&>(*évènement);
      if (touche.key() != kTouche) return false;
      Touche(touche.type() == QEvent::KeyPress, touche.isAutoRepeat());
      return true;
    }
    case QEvent::MouseButtonPress:
      if (std::ranges::find(boutons_, objet) != boutons_.end()) sourisTenue_ = true;
      if (objet->isWindowType()) {
        ClicSousUnMenu(static_cast<const QMouseEvent*>(évènement)->globalPosition().toPoint());
      }
      return false;
    case QEvent::MouseButtonRelease:
      if (sourisTenue_) LâcheLaSouris();
      return false;
    case QEvent::ApplicationDeactivate:
      toucheTenue_ = false;  // what is released now is told to another program
      LâcheLaSouris();
      return false;
    case QEvent::Polish:
      Equipe(*objet);
      return false;
    default:
      return false;
  }
}

}  // namespace zuma::host
