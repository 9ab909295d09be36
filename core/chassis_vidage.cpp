// Diagnostic dump of a frame: its own block, then its objects in the order of their lines.
#include "base/vidage.h"
#include "core/chassis.h"

namespace zuma {

void Chassis::AutoSave(const std::string& Ou) const {
  // Marks in seconds. The outputs' stay at 0: nothing refreshes outputs at a rate.
  static constexpr ChampVidé<Chassis> kChamps[] = {
      {"Nom du Chassis :               ", &Chassis::Nom_},
      {"Fréquence de rafraichissement des entrées analogiques :    ", &Chassis::mdblFréquenceEA},
      {"Fréquence de rafraichissement des sorties analogiques :    ", &Chassis::mdblFréquenceSA},
      {"Fréquence de rafraichissement des entrées logiques :       ", &Chassis::mdblFréquenceEL},
      {"Fréquence de rafraichissement des sorties logiques :       ", &Chassis::mdblFréquenceSL},
      {"Heure du dernier rafraichissement des entrées analogiques :    ",
       &Chassis::HeurePrécédenteMàJEA},
      {"Heure du dernier rafraichissement des sorties analogiques :    ",
       &Chassis::HeurePrécédenteMàJSA},
      {"Heure du dernier rafraichissement des entrées logiques :       ",
       &Chassis::HeurePrécédenteMàJEL},
      {"Heure du dernier rafraichissement des sorties logiques :       ",
       &Chassis::HeurePrécédenteMàJSL},
  };
  BlocDeVidage bloc(2, "*                          Chassis                         *");
  bloc.Champs<Chassis>(*this, kChamps);
  bloc.Noms("Nom de la carte :              ", Cartes_);
  bloc.Noms("Nom de capteur :               ", Capteurs_);
  bloc.Noms("Nom de la commande :           ", Commandes_);
  bloc.Noms("Nom de l'entrée logique :      ", EntréesLogiques_);
  bloc.Noms("Nom de la sortie logique :     ", SortiesLogiques_);
  bloc.Ajoute(*this, Ou);

  VideLesMembres(Cartes_, Ou);
  VideLesMembres(Capteurs_, Ou);
  VideLesMembres(Commandes_, Ou);
  VideLesMembres(EntréesLogiques_, Ou);
  VideLesMembres(SortiesLogiques_, Ou);
}

}  // namespace zuma
