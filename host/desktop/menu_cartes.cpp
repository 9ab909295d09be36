#include "host/desktop/menu_cartes.h"

#include <QAction>
#include <QMenu>
#include <array>

#include "instruments/conditionneur_num_k9.h"
#include "instruments/conditionneur_num_k9_v1_00.h"
#include "instruments/instrument.h"

namespace zuma::host {
namespace {

template <class Conditionneur>
void Règle(Carte& carte, FenêtreHôte& mère) {
  instruments::De<Conditionneur>(carte).Reglage(&mère);
}

struct Entretien {
  ENUM_DRIVER driver;
  void (*montre)(Carte& carte, FenêtreHôte& mère);
};
constexpr std::array kEntretiens{
    Entretien{ENUM_DRIVER::DrvConditionneurNumeriqueK9, &Règle<ClassConditionneurNum_K9>},
    Entretien{ENUM_DRIVER::DrvConditionneurNumeriqueK9_V1_00,
              &Règle<ClassConditionneurNum_K9_V1_00>},
};

const Entretien* EntretienDe(const Carte& carte) {
  for (const Entretien& entretien : kEntretiens) {
    if (entretien.driver == carte.Driver_enm()) return &entretien;
  }
  return nullptr;
}

QString Titre(const Carte& carte, const Textes& textes, bool avecFeuille) {
  return EnQt(carte.Key()) + "  " + SansTouche(EnQt(carte.NomDeLaCarte())) +
         (avecFeuille ? ": " + textes("Geste entretien") + "..." : QString());
}

}  // namespace

void RemplitLeMenuDesCartes(QMenu& menu, Chassis& chassis, const Textes& textes,
                            FenêtreHôte& mère) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    const Entretien* entretien = EntretienDe(*carte);
    QAction* action = menu.addAction(Titre(*carte, textes, entretien != nullptr));
    action->setObjectName("carte" + EnQt(carte->Key()));
    action->setEnabled(entretien != nullptr);
    if (entretien == nullptr) continue;
    QObject::connect(action, &QAction::triggered, &menu,
                     [entretien, c = carte.Brut(), &mère] { entretien->montre(*c, mère); });
  }
}

}  // namespace zuma::host
