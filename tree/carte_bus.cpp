// Scheduling of a bus board: one exchange at a time, over several passes.
#include "tree/carte.h"

namespace zuma {
namespace {

// A stop of a block that was taken out of service since its last write still leaves, turn by turn
// until it is confirmed.
bool EstServie(Fonction& fonction) {
  return fonction.Enabled() || fonction.Modbus_Echange().sorties.ArrêtDû();
}

// A slow slave has missed a stop. That stop comes first once the slave has rested: any other
// question would keep it busy, and busy it hears nothing. Where all answer in time the turns stay
// as they are.
bool DoitUnArrêt(Fonction& fonction) {
  const EchangeModbus& échange = fonction.Modbus_Echange();
  return échange.doute.EnDoute() && échange.sorties.ArrêtDû() &&
         échange.doute.EstReposé(fonction.LeTimer()->LitMicrosecondes());
}

FonctionRef CelleQuiDoitUnArrêt(const Fonctions& fonctions) {
  for (const FonctionRef& fonction : fonctions) {
    if (DoitUnArrêt(*fonction)) return fonction;
  }
  return {};
}

}  // namespace

void Carte::SertLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain) {
  const zuma::Fonctions& fonctions = LesFonctions();
  bool enCours = false;
  for (const FonctionRef& fonction : fonctions) {
    enMain = fonction->TypeDeFonction();
    enCours = enCours || fonction->RafraichissementEnCours();
  }
  if (enCours) {
    PoursuitLeBus(enMain);
  } else {
    DébuteSurLeBus(enMain);
  }
  enMain.reset();
}

// The first block in service gets the line: the first one behind a block that did not start its
// exchange, since that one would keep the bus, and a stop behind it, for ever.
void Carte::DébuteSurLeBus(std::optional<ENUM_TYPE_FONCTION>& enMain) {
  if (const FonctionRef due = CelleQuiDoitUnArrêt(LesFonctions())) return Débute(due);
  FonctionRef choisie;
  bool passée = sansEchange_ == nullptr;
  for (const FonctionRef& fonction : LesFonctions()) {
    if (EstServie(*fonction) && (!choisie || passée)) {
      choisie = fonction;
      if (passée) break;
    }
    passée = passée || fonction.Brut() == sansEchange_;
  }
  if (!choisie) return;
  enMain = choisie->TypeDeFonction();
  Débute(choisie);
}

void Carte::Débute(const FonctionRef& fonction) {
  fonction->MetàJour();
  sansEchange_ = fonction->RafraichissementEnCours() ? nullptr : fonction.Brut();
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
    if (!EstServie(*fonction)) continue;
    if (const FonctionRef due = CelleQuiDoitUnArrêt(LesFonctions())) return Débute(due);
    if (Service() == ServiceCarte::BusSimple) {
      Débute(fonction);
    } else if (const FonctionRef suivante = FonctionSuivante_) {
      Débute(suivante);
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
