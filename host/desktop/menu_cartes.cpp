#include "host/desktop/menu_cartes.h"

#include <QAction>
#include <QMenu>

namespace zuma::host {
namespace {

using Entretien = void (*)(Carte& carte, FenêtreHôte& mère);

Entretien EntretienDe(const Carte& carte) {
  const OpérationsCarte* opérations = carte.LeDriver().carte;
  return opérations == nullptr ? nullptr : opérations->entretient;
}

QString Titre(const Carte& carte, const Textes& textes, bool avecFeuille) {
  return EnQt(carte.Key()) + "  " + SansTouche(EnQt(carte.NomDeLaCarte())) +
         (avecFeuille ? ": " + textes("Geste entretien") + "..." : QString());
}

}  // namespace

void RemplitLeMenuDesCartes(QMenu& menu, Chassis& chassis, const Textes& textes,
                            FenêtreHôte& mère) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    const Entretien entretien = EntretienDe(*carte);
    QAction* action = menu.addAction(Titre(*carte, textes, entretien != nullptr));
    action->setObjectName("carte" + EnQt(carte->Key()));
    action->setEnabled(entretien != nullptr);
    if (entretien == nullptr) continue;
    QObject::connect(action, &QAction::triggered, &menu,
                     [entretien, c = carte.Brut(), &mère] { entretien(*c, mère); });
  }
}

}  // namespace zuma::host
