// Diagnostic dump of a command.
#include "commands/commande.h"
#include "tree/vidage_arbre.h"

namespace zuma {

struct Commande::Vidage {
  using Champ = ChampVidé<Commande>;
  static constexpr Champ kEtalonnage[] = {
      {"Date d'étalonnage :            ", &Commande::DateEtalonnage_},
      {"Nom de l'étalonneur :          ", &Commande::NomEtalonneur_},
      {"Unité d'étalonnage :           ", &Commande::UnitéEtalonnage_},
      {"Maxi de la commande :          ", &Commande::mdblMaxiCommande},
      {"Mini de la commande :          ", &Commande::mdblMiniCommande},
      {"Valeur initiale :              ", &Commande::mdblValeurInitiale},
      {"Valeur courante en unité :     ", &Commande::mdblValeurCouranteEnUnité},
      {"Valeur courante en point :     ", &Commande::ValeurCouranteEnPoints_},
  };
  static constexpr Champ kSécurités[] = {
      {"Sécu maxi en unité commande :  ", &Commande::mdblSécuritéMaxiEnUnité},
      {"Sécu mini en unité commande :  ", &Commande::mdblSécuritéMiniEnUnité},
      {"Sécu maxi en point commande :  ", &Commande::mdblSécuritéMaxiEnPoints},
      {"Sécu mini en point commande :  ", &Commande::mdblSécuritéMiniEnPoints},
  };
};

void Commande::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(4, "*                        Commande                          *");
  bloc.Texte("Nom de la Commande :           ", NomDeLaCommande_);
  bloc.Texte("Index de la Commande :         ", Key());
  VideLeCanal(bloc, mobjCanal);
  bloc.Choix("Commande Autorisée :           ", kNonOui, mblnEnabled ? 1 : 0);
  bloc.Champs<Commande>(*this, Vidage::kEtalonnage);
  bloc.Choix("Sortie saturée :               ", kNonOui, propSortieSaturée ? 1 : 0);
  bloc.Champs<Commande>(*this, Vidage::kSécurités);
  for (std::int16_t n = 1; n <= TableEtalonnage::kMaxPoints; ++n) {
    bloc.Point(n, "commande :   ", table_.PointX(n), table_.PointY(n));
  }
  bloc.Ajoute(*this, Ou);
}

}  // namespace zuma
