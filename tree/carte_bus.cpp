// Scheduling of a bus board: one exchange at a time, over several passes.
#include "tree/carte.h"

namespace zuma {

void Carte::SertLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain) {
  const zuma::Fonctions& fonctions = LesFonctions();
  bool enCours = false;
  for (const FonctionRef& fonction : fonctions) {
    enMain = fonction->TypeDeFonction();
    enCours = enCours || fonction->RafraichissementEnCours();
  }
  if (!enCours) {
    for (const FonctionRef& fonction : fonctions) {
      enMain = fonction->TypeDeFonction();
      if (!fonction->Enabled()) continue;
      fonction->MetàJour();
      break;
    }
  } else {
    PoursuitLeBus(enMain);
  }
  enMain.reset();
}

// The exchange in progress gets its turn; once it has ended, the walk goes on to the first block
// in service after it, and only there is a next exchange started.
void Carte::PoursuitLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain) {
  bool suivant = false;
  for (const FonctionRef& fonction : LesFonctions()) {
    enMain = fonction->TypeDeFonction();
    if (!suivant) {
      if (!fonction->RafraichissementEnCours()) continue;
      fonction->MetàJour();
      if (fonction->RafraichissementEnCours()) continue;
      suivant = true;
      if (Service() == ServiceCarte::BusAvecSuivante) AvanceFonctionSuivante();
      continue;
    }
    if (!fonction->Enabled()) continue;
    if (Service() == ServiceCarte::BusSimple) {
      fonction->MetàJour();
    } else if (const FonctionRef suivante = FonctionSuivante_) {
      suivante->MetàJour();
    }
    return;
  }
}

void Carte::AvanceFonctionSuivante() {
  FonctionRef cible;
  bool vue = false;
  for (const FonctionRef& fonction : LesFonctions()) {
    if (!cible || vue) cible = fonction;
    if (vue) break;
    vue = FonctionSuivante_ && fonction->Key() == FonctionSuivante_->Key();
  }
  FonctionSuivante_ = cible;
}

}  // namespace zuma
