#include "host/suivi_de_l_arret.h"

#include <utility>

namespace zuma::host {
namespace {

constexpr std::string_view kSection = "Arret";

// A port or a library takes a write at once; buses and instruments confirm theirs, or not.
bool EstDirecte(const Canal& canal) {
  const Fonction* bloc = canal.Parent();
  return bloc != nullptr && bloc->LaCarte()->Service() == ServiceCarte::ParFonction;
}

// The lines of an on-off command are logic outputs.
bool EstUneSortie(const Commande& commande) {
  return commande.Canal() && commande.TypeCommande() != ENUM_TYPE_COMMANDE::Aucune &&
         commande.TypeCommande() != ENUM_TYPE_COMMANDE::ToutOuRien;
}

}  // namespace

void SuiviDeLArrêt::Suit(Chassis& chassis) {
  for (const CommandeRef& commande : *chassis.Commandes()) {
    if (!EstUneSortie(*commande)) continue;
    sorties_.push_back({commande->NomDeLaCommande(), [commande] { return commande->Atteinte(); },
                        EstDirecte(*commande->Canal())});
  }
  for (const SortieLogiqueRef& sortie : *chassis.SortiesLogiques()) {
    if (!sortie->Canal()) continue;
    sorties_.push_back({sortie->NomDeLaSortieLogique(), [sortie] { return sortie->Atteinte(); },
                        EstDirecte(*sortie->Canal())});
  }
  const WatchdogRef chien = chassis.Watchdog();
  if (chien->SortiePulse() || chien->Adresse() == 0) return;
  sorties_.push_back(
      {std::string(chien->NomPourErreur()), [chien] { return chien->ArrêtAtteint(); }, true});
}

void SuiviDeLArrêt::Observe(bool arrêt, double maintenant) {
  if (arrêt && !arrêt_) {
    ++arrêts_;
    for (Sortie& sortie : sorties_) sortie.depuis.reset();
  }
  arrêt_ = arrêt;
  for (Sortie& sortie : sorties_) {
    if (arrêt || sortie.portée == Portée::Manquée) Regarde(sortie, maintenant);
  }
}

void SuiviDeLArrêt::Regarde(Sortie& sortie, double maintenant) {
  if (sortie.atteinte()) {
    sortie.depuis.reset();
    Change(sortie, Portée::Atteinte);
    return;
  }
  if (!sortie.depuis) sortie.depuis = maintenant;
  const bool attendue = !sortie.directe && maintenant - *sortie.depuis < kDélai;
  if (sortie.portée != Portée::Manquée) {
    Change(sortie, attendue ? Portée::Attendue : Portée::Manquée);
  }
}

void SuiviDeLArrêt::Change(Sortie& sortie, Portée portée) {
  const Portée avant = std::exchange(sortie.portée, portée);
  if (avant == portée) return;
  if (portée == Portée::Manquée) {
    ++manquées_;
    Consigne("Texte sortie manquee", sortie);
  } else if (avant == Portée::Manquée) {
    --manquées_;
    Consigne("Texte sortie atteinte tard", sortie);
  }
}

// With the number of the stop: the record keeps a text once.
void SuiviDeLArrêt::Consigne(std::string_view texte, const Sortie& sortie) {
  recueil_->AjouteErreur(traducteur_->Traduit(texte, texte, kSection) + " " +
                             std::to_string(arrêts_) + " : " + sortie.nom,
                         {});
}

void SuiviDeLArrêt::Conclut() {
  for (Sortie& sortie : sorties_) {
    Change(sortie, sortie.atteinte() ? Portée::Atteinte : Portée::Manquée);
  }
}

const std::vector<SuiviDeLArrêt::Sortie>& SuiviDeLArrêt::Sorties() const noexcept {
  static const std::vector<Sortie> kAucune;
  return arrêt_ || manquées_ != 0 ? sorties_ : kAucune;
}

std::vector<std::string> SuiviDeLArrêt::Manquées() const {
  std::vector<std::string> noms;
  if (manquées_ == 0) return noms;
  for (const Sortie& sortie : sorties_) {
    if (sortie.portée == Portée::Manquée) noms.push_back(sortie.nom);
  }
  return noms;
}

}  // namespace zuma::host
