// References of a logic input to its channel and its parameters.
#include "base/garde.h"
#include "core/liaison.h"
#include "core/recherche.h"
#include "logic/entree_logique.h"

namespace zuma {

void EntréeLogique::Lien(const Ref<ZED_Securite>& MaSecurite_obj,
                         const ParamètresRef& MesParametres_mobj,
                         const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis) {
  Garde(*this, Forme::Méthode, "Lien", [&] {
    // First: a failure among the references must not leave the input without its safety object.
    if (MaSecurite_obj) Securite_ = MaSecurite_obj;
    if (Traducteur_obj) Traducteur_ = Traducteur_obj;
    liaison::LieLeCanal(*this, "Attention : L'entrée logique '", MonChassis, indexCanal_,
                        mobjCanal);
    if (MesParametres_mobj) LieLesParamètres(*MesParametres_mobj);
  });
}

// The last two are passed over when the index of the active state is 0, whatever their own.
void EntréeLogique::LieLesParamètres(const ParamètresPartagés& paramètres) {
  const struct {
    RangParamètre rang;
    RangParamètre rangDuZéro;
    std::string_view utilise;
  } lignes[] = {
      {Etat, Etat, "' utilise le Parametre Etat d'index '"},
      {EtatActif, EtatActif, "' utilise le parametre Etat d'index '"},
      {EtatInactif, EtatActif, "' utilise le parametre Etat d'index '"},
      {Défaut, EtatActif, "' utilise le parametre Etat d'index '"},
  };
  for (const auto& ligne : lignes) {
    auto& [index, lié] = paramètres_[ligne.rang];
    if (EstNul(index) || liaison::EstZéro(paramètres_[ligne.rangDuZéro].index)) continue;
    const std::string clé = VersTexte(index);
    const Ref<ZED_Parametre> trouvé = recherche::ParamètreDeClé(paramètres, clé);
    if (trouvé) {
      lié = trouvé;
    } else {
      Montre(liaison::Introuvable("L'entrée logique '", *this, ligne.utilise, clé,
                                  "' qui n'a pas été trouvé."));
    }
  }
}

}  // namespace zuma
