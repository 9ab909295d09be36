#include "host/desktop/volet_arret.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <utility>

namespace zuma::host {
namespace {

// By palette and not by style: a style would keep the size of text that it was born with.
QPalette PaletteDArrêt() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0xb0, 0x00, 0x20));
  palette.setColor(QPalette::WindowText, Qt::white);
  return palette;
}

}  // namespace

VoletArrêt::VoletArrêt(const linux_::Securite& sécurité, const SuiviDeLArrêt& suivi,
                       const Textes& textes, std::function<void()> arrête,
                       std::function<bool()> acquitte)
    : sécurité_(sécurité),
      suivi_(suivi),
      textes_(textes),
      bandeau_(new QLabel(this)),
      acquitte_(new QPushButton(textes("Bouton acquitte"), this)),
      organe_(textes, {.arrête = std::move(arrête),
                       .déclenchée = [this] { return sécurité_.Déclenchée(); },
                       .changé = [this] { Rafraîchit(); }}) {
  setObjectName("voletArret");
  QPushButton* bouton = organe_.Bouton(this);
  bouton->setObjectName("arret");
  bandeau_->setObjectName("bandeau");
  acquitte_->setObjectName("acquitte");
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
  ligne->addWidget(bouton);
  ligne->addWidget(bandeau_, 1);
  ligne->addWidget(acquitte_);
  connect(acquitte_, &QPushButton::clicked, this, [this, acquitte = std::move(acquitte)] {
    refusé_ = organe_.Tenu();  // a stop that is still asked for is not acknowledged
    // A cause that came since must be seen before it is forgotten.
    if (!refusé_ && montrées_ == sécurité_.Causes().size()) (void)acquitte();
    Rafraîchit();
  });
  Rafraîchit();
}

void VoletArrêt::Rafraîchit() {
  const bool arrêt = sécurité_.Déclenchée();
  const std::vector<std::string> manquées = suivi_.Manquées();
  QStringList lignes = arrêt ? LesCauses() : QStringList();
  for (const std::string& nom : manquées) {
    lignes += "■ " + textes_("Bandeau incomplet") + " " + EnQt(nom);
  }
  const QString texte = lignes.isEmpty() ? textes_("Bandeau calme") : lignes.join("\n");
  acquitte_->setEnabled(arrêt);
  montrées_ = sécurité_.Causes().size();
  if (bandeau_->text() == texte) return;
  bandeau_->setPalette(arrêt || !manquées.empty() ? PaletteDArrêt() : QPalette());
  bandeau_->setText(texte);
}

QStringList VoletArrêt::LesCauses() const {
  QStringList lignes;
  for (const linux_::Securite::Cause& cause : sécurité_.Causes()) {
    lignes += "■ " + textes_("Bandeau arret") + " " + EnQt(cause.texte);
  }
  if (sécurité_.Perdues() != 0) {
    lignes += "■ " + textes_("Bandeau perdues") + " " + QString::number(sécurité_.Perdues());
  }
  if (refusé_ && organe_.Tenu()) lignes += "■ " + textes_("Bandeau tenu");
  return lignes.isEmpty() ? QStringList(textes_("Bandeau arret")) : lignes;
}

}  // namespace zuma::host
