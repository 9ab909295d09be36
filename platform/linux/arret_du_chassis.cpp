#include "platform/linux/arret_du_chassis.h"

#include <algorithm>
#include <cmath>

#include "base/garde.h"
#include "base/poursuite.h"
#include "core/chassis.h"
#include "core/ordre_des_cartes.h"
#include "tree/bloc_de_sorties.h"

namespace zuma::linux_ {
namespace {

// It drives its channel by itself: the lines of an on-off command are logic outputs.
bool MèneUnCanal(const Commande& commande) {
  return commande.Canal() && commande.TypeCommande() != ENUM_TYPE_COMMANDE::ToutOuRien;
}

// Two commands on one channel would pull it to and fro: the one in service has it, or the first.
bool AUnAutreMaître(const Commandes& commandes, const Commande& commande) {
  bool avant = true;
  for (const CommandeRef& autre : commandes) {
    if (autre.Brut() == &commande) {
      avant = false;
    } else if (MèneUnCanal(*autre) && autre->Canal().Brut() == commande.Canal().Brut() &&
               (avant || autre->Enabled())) {
      return true;
    }
  }
  return false;
}

// What a command out of service reads back is a rounded value of its channel.
bool EstÀLaValeurInitiale(const Commande& commande) {
  const double étendue =
      std::max({1.0, std::fabs(commande.MiniCommande()), std::fabs(commande.MaxiCommande())});
  return std::fabs(commande.ValeurCouranteEnUnité() - commande.ValeurInitiale()) <= 1e-9 * étendue;
}

// The frame leaves a command that is out of service where its output stands: here it takes the stop
// like the others. In service it first writes what stands there, so that nothing moves before.
void ReprendAuRepos(Commande& commande) {
  commande.MetàJour();  // reads the channel back
  if (EstÀLaValeurInitiale(commande)) return;
  Poursuite chacun;
  chacun([&] { commande.Enabled(true); });
  chacun([&] { commande.DéclencheAU(); });
  chacun([&] { commande.Enabled(false); });
  chacun.Termine();
}

// A dither at rest goes on in its own time.
void MetAuRepos(const Commandes& commandes, Commande& commande) {
  const ENUM_TYPE_COMMANDE type = commande.TypeCommande();
  const bool enUnités = type == ENUM_TYPE_COMMANDE::Normale || type == ENUM_TYPE_COMMANDE::Servo;
  commande.MaintientAuRepos();
  if (enUnités && !commande.Enabled() && commande.Canal()) {
    if (!AUnAutreMaître(commandes, commande)) ReprendAuRepos(commande);
  } else if (commande.FréquenceDither() == 0 || !EstÀLaValeurInitiale(commande)) {
    commande.DéclencheAU();
  }
}

void MetAuRepos(Chassis& chassis, Poursuite& chacun) {
  const CommandesRef commandes = chassis.Commandes();
  for (const CommandeRef& commande : *commandes) {
    chacun([&] { MetAuRepos(*commandes, *commande); });
  }
  for (const SortieLogiqueRef& sortie : *chassis.SortiesLogiques()) {
    chacun([&] { sortie->DéclencheAU(); });
  }
}

// The output blocks of the boards that the pass leaves alone, whether they hold what they were
// written or not: a port tells nothing of a board that lost its power for a moment.
void EcritLesSorties(Chassis& chassis, Poursuite& chacun) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    chacun([&] {
      if (carte->Service() != ServiceCarte::ParFonction) return;
      for (const FonctionRef& bloc : carte->LesFonctions()) {
        if (EstUneSortie(*bloc)) chacun([&] { bloc->MetàJour(); });
      }
    });
  }
}

void RafraîchitLesCartes(Chassis& chassis, Poursuite& chacun) {
  ParAttente(*chassis.Cartes(), [&](Carte& carte) { chacun([&] { carte.MetàJour(); }); });
}

// The pass refreshes the board for as long as `Enabled` says so, and fast passes would keep it from
// tripping in the 10 ms of its stop. While it is not in its stop this would stop it instead, and
// close its contact.
void CesseDeRafraîchir(Watchdog& chien) {
  if (chien.EnArrêt()) chien.Enabled(false);
}

template <class Travail>
void FaitToute(const Chassis& chassis, Travail&& travail) {
  Garde(chassis, Forme::Méthode, "DéclencheAU", [&] {
    Poursuite chacun;
    travail(chacun);
    chacun.Termine();
  });
}

}  // namespace

bool ArrêtAtteint(Chassis& chassis) {
  return chassis.Watchdog()->ArrêtAtteint() && chassis.SortiesNonAtteintes().empty();
}

void ArrêteLeChassis(Chassis& chassis) {
  FaitToute(chassis, [&](Poursuite& chacun) {
    Watchdog& chien = *chassis.Watchdog();
    const bool déjà = chien.EnArrêt();
    MetAuRepos(chassis, chacun);
    if (déjà || chien.Adresse() != 0) RafraîchitLesCartes(chassis, chacun);
    if (!déjà) chacun([&] { chassis.DéclencheAU(); });
    chacun([&] { CesseDeRafraîchir(chien); });
  });
}

void MaintientLArrêt(Chassis& chassis) {
  FaitToute(chassis, [&](Poursuite& chacun) {
    Watchdog& chien = *chassis.Watchdog();
    MetAuRepos(chassis, chacun);
    EcritLesSorties(chassis, chacun);
    chacun([&] {
      if (!chien.ArrêtAtteint() && chien.CartePrête()) chien.DéclencheAU();
    });
    chacun([&] { CesseDeRafraîchir(chien); });
  });
}

}  // namespace zuma::linux_
