// Refresh of a logic input: source, filter, event, stop, parameters.
#include "logic/entree_logique.h"

#include <exception>

#include "base/garde.h"
#include "base/publication.h"
#include "logic/etat_activation.h"
#include "logic/lecteur_clavier.h"

namespace zuma {
namespace {

constexpr double kMicrosecondes = 1'000'000;

}  // namespace

CanalRef EntréeLogique::Canal() {
  if (!mobjCanal) mobjCanal = Crée<zuma::Canal>(LaPlateforme());
  return mobjCanal;
}

void EntréeLogique::ValeurCourante(ENUM_ETAT_LOGIQUE valeur) {
  Garde(*this, Forme::Ecriture, "ValeurCourante", [&] {
    if (!mobjCanal) Prend(valeur);
  });
}

void EntréeLogique::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    filtreAmorcé_ = false;  // what was read before may be hours old
    const Pointeur<Clavier>& clavier = LaPlateforme().clavier;
    if (!clavier && Touche_.empty()) return;
    clavier::LâcheLesTouches(*clavier);
    if (Touche_.empty()) return;
    const std::string défaut = clavier->Défaut();
    if (!défaut.empty()) throw Echec(Numéro::MatérielAbsent, défaut);
  });
}

void EntréeLogique::Force(ENUM_ETAT_LOGIQUE état) {
  musrValeurForcée = état;
  mblnForcée = true;
}

void EntréeLogique::MetàJour() {
  Garde(
      *this, Forme::Méthode, "MetàJour",
      [&] {
        try {
          Rafraîchit();
        } catch (...) {
          // A failing input stops asking for stops until it is read again.
          mblnLue = false;
          mblnForcée = false;
          throw;
        }
      },
      [&](Variables& v) {
        v.Ajoute("mblnEtatActivation", mblnEtatActivation);
        v.Ajoute("musrValeurCourante", static_cast<std::int32_t>(musrValeurCourante));
        if (mobjCanal) {
          v.Ajoute("mobjCanal.ValeurCanal", mobjCanal->ValeurCanal());
        } else {
          v.AjouteVide();
        }
      });
}

void EntréeLogique::Rafraîchit() {
  const bool rien = Touche_.empty() && !mobjCanal;
  if (rien && musrEtatSiRien != ENUM_ETAT_LOGIQUE::Inconnu) return;
  // A handler of `Change` that fails must not keep the stop from firing: it is told afterwards.
  std::exception_ptr échec;
  try {
    Filtre(LitLaSource());
  } catch (...) {
    échec = std::current_exception();
  }
  if (DoitArrêter()) DéclencheLArrêt();
  Publie();
  if (échec) std::rethrow_exception(échec);
}

ENUM_ETAT_LOGIQUE EntréeLogique::LitLaSource() {
  bool actif = false;
  if (LaToucheEstEnfoncée()) {
    actif = true;
    mblnLue = true;
  }
  if (CanalNommé() && mobjCanal->CanalRafraichit()) {
    if (LeCanalEstActif()) actif = true;
    mblnLue = true;
  }
  return actif ? ENUM_ETAT_LOGIQUE::Actif : ENUM_ETAT_LOGIQUE::Inactif;
}

// Without a keyboard no key is down: `Initialise` has told so, and the channel goes on.
bool EntréeLogique::LaToucheEstEnfoncée() const {
  if (Touche_.empty() || !LaPlateforme().clavier) return false;
  std::string_view nom;
  clavier::LitToucheEnfoncée(LaPlateforme().clavier->LitEtat(), nom);
  return nom == Touche_;
}

bool EntréeLogique::LeCanalEstActif() const {
  return mobjCanal->ValeurCanal() == NiveauLogique(true, mblnEtatActivation);
}

// The first real reading counts at once: the state held before it was never read, and must neither
// stop the frame nor hide a button that is pressed. A failure clears the read flag and leaves the
// filter as it is: the source was read and filtered in the refresh that failed.
void EntréeLogique::Filtre(ENUM_ETAT_LOGIQUE brut) {
  if (mdblAntiRebond == 0) {
    Prend(brut);
    return;
  }
  const double maintenant = Timer()->LitMicrosecondes() / kMicrosecondes;
  const bool première = mblnLue && !filtreAmorcé_;
  if (première || brut != dernierBrut_) {
    heureDuBrut_ = maintenant;
    dernierBrut_ = brut;
    filtreAmorcé_ = filtreAmorcé_ || première;
    if (première) Prend(brut);
  } else if (maintenant >= heureDuBrut_ + mdblAntiRebond) {
    Prend(brut);
  }
}

void EntréeLogique::Prend(ENUM_ETAT_LOGIQUE état) {
  if (état == musrValeurCourante) return;
  musrValeurCourante = état;
  Change_.Lève(état);
}

bool EntréeLogique::DoitArrêter() const {
  if (!mblnLue || !mblnAutoriseAU) return false;
  return (musrEtatAU == ENUM_ETAT_AU_LOGIQUE::Activé &&
          musrValeurCourante == ENUM_ETAT_LOGIQUE::Actif) ||
         (musrEtatAU == ENUM_ETAT_AU_LOGIQUE::Désactivé &&
          musrValeurCourante == ENUM_ETAT_LOGIQUE::Inactif);
}

// The stop fires on each refresh for as long as the condition holds. It fires too when the cause
// cannot be worded or kept: that failure is told afterwards.
void EntréeLogique::DéclencheLArrêt() {
  const Ref<ZED_Securite> sécurité = Securite_;
  const auto traduit = [&](std::string_view clé) {
    return Traducteur_ ? Traducteur_->Traduit(clé) : std::string(clé);
  };
  try {
    const bool actif = musrValeurCourante == ENUM_ETAT_LOGIQUE::Actif;
    sécurité->PositionneCauseAU(traduit("Texte declenchement AU par EL") + " " +
                                NomDeEntréeLogique_ + traduit("Texte etat detecte") + " " +
                                traduit(actif ? "Texte Actif" : "Texte Inactif"));
  } catch (...) {
    sécurité->DéclencheSécurité();
    throw;
  }
  sécurité->DéclencheSécurité();
}

void EntréeLogique::Publie() {
  const auto copie = [&](RangParamètre source) {
    auto& [destination, texte] = tampons_;
    zuma::Publie(*paramètres_[Etat].paramètre, paramètres_[source].paramètre->LitValeur(texte),
                 destination);
  };
  const auto liés = [&](auto... rangs) { return (paramètres_[rangs].paramètre && ...); };
  if (Touche_.empty() && !CanalNommé()) {
    if (liés(Etat, Défaut)) copie(Défaut);
  } else if (liés(Etat, EtatActif, EtatInactif)) {
    if (musrValeurCourante == ENUM_ETAT_LOGIQUE::Actif) copie(EtatActif);
    if (musrValeurCourante == ENUM_ETAT_LOGIQUE::Inactif) copie(EtatInactif);
  }
}

}  // namespace zuma
