#include "host/desktop/volet_arret.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <utility>

namespace zuma::host {
namespace {

constexpr auto kRouge =
    "QPushButton { background: #c00018; color: white; font-weight: bold; font-size: 18pt;"
    " padding: 6px 26px; border: 3px solid #700010; border-radius: 6px; }"
    "QPushButton:pressed { background: #800010; }"
    "QPushButton:focus { border-color: black; }";
// By palette and not by style: a style would keep the size of text that it was born with.
QPalette PaletteDArrêt() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0xb0, 0x00, 0x20));
  palette.setColor(QPalette::WindowText, Qt::white);
  return palette;
}

}  // namespace

VoletArrêt::VoletArrêt(const linux_::Securite& sécurité, const Textes& textes,
                       std::function<void()> arrête, std::function<bool()> acquitte)
    : sécurité_(sécurité),
      textes_(textes),
      arrête_(std::move(arrête)),
      bouton_(new QPushButton(this)),
      bandeau_(new QLabel(this)),
      acquitte_(new QPushButton(textes("Bouton acquitte"), this)) {
  setObjectName("voletArret");
  bouton_->setObjectName("arret");
  bandeau_->setObjectName("bandeau");
  acquitte_->setObjectName("acquitte");
  bouton_->setText(textes("Bouton arret") + " (" + QKeySequence(kTouche).toString() + ")");
  bouton_->setStyleSheet(kRouge);
  bandeau_->setTextFormat(Qt::PlainText);  // names of the configuration are no markup
  bandeau_->setWordWrap(true);
  bandeau_->setMargin(6);
  bandeau_->setAutoFillBackground(true);
  QFont gras;
  gras.setBold(true);
  bandeau_->setFont(gras);
  bandeau_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* ligne = new QHBoxLayout(this);
  ligne->setContentsMargins(0, 0, 0, 0);
  ligne->addWidget(bouton_);
  ligne->addWidget(bandeau_, 1);
  ligne->addWidget(acquitte_);
  // Pressed, and not clicked: a pointer that slips off before its release must not undo a stop.
  connect(bouton_, &QPushButton::pressed, this, [this] {
    arrête_();
    Rafraîchit();
  });
  connect(acquitte_, &QPushButton::clicked, this, [this, acquitte = std::move(acquitte)] {
    (void)acquitte();
    Rafraîchit();
  });
  qApp->installEventFilter(this);
  Rafraîchit();
}

VoletArrêt::~VoletArrêt() {
  qApp->removeEventFilter(this);
}

// A shortcut would be held back by a modal dialog.
bool VoletArrêt::eventFilter(QObject* objet, QEvent* évènement) {
  if (évènement->type() != QEvent::KeyPress) return QWidget::eventFilter(objet, évènement);
  const auto* touche = static_cast<const QKeyEvent*>(évènement);
  if (touche->key() != kTouche) return QWidget::eventFilter(objet, évènement);
  if (!touche->isAutoRepeat()) {
    arrête_();
    Rafraîchit();
  }
  return true;
}

void VoletArrêt::Rafraîchit() {
  const bool arrêt = sécurité_.Déclenchée();
  const QString texte = arrêt ? TexteDesCauses() : textes_("Bandeau calme");
  acquitte_->setEnabled(arrêt);
  if (bandeau_->text() == texte) return;
  bandeau_->setPalette(arrêt ? PaletteDArrêt() : QPalette());
  bandeau_->setText(texte);
}

QString VoletArrêt::TexteDesCauses() const {
  QStringList lignes;
  for (const linux_::Securite::Cause& cause : sécurité_.Causes()) {
    lignes += "■ " + textes_("Bandeau arret") + " " + EnQt(cause.texte);
  }
  if (!sécurité_.ArrêtComplet()) lignes += "■ " + textes_("Bandeau incomplet");
  if (sécurité_.Perdues() != 0) {
    lignes += "■ " + textes_("Bandeau perdues") + " " + QString::number(sécurité_.Perdues());
  }
  return lignes.isEmpty() ? textes_("Bandeau arret") : lignes.join("\n");
}

}  // namespace zuma::host
