// Diagnostic dump of logic inputs and outputs and of the watchdog.
#include "logic/entree_logique.h"
#include "logic/sortie_logique.h"
#include "logic/watchdog.h"
#include "tree/vidage_arbre.h"

namespace zuma {
namespace {

/// By `ENUM_ETAT_LOGIQUE`.
constexpr std::string_view kEtats[] = {"Activé", "Inactivé"};

}  // namespace

// The filtered state, even while the host forces another one. The channel is looked at and not
// asked for: `Canal` would make one, and the host could no longer assign the input.
void EntréeLogique::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(4, "*                      Entrée Logique                      *");
  bloc.Texte("Nom de l'entrée logique :      ", NomDeEntréeLogique_);
  bloc.Texte("Index de l'entrée logique :    ", Key());
  VideLeCanal(bloc, mobjCanal);
  bloc.Choix("Etat d'activation de l'EL :    ", kZéroUn, mblnEtatActivation ? 1 : 0);
  bloc.Choix("Valeur courante de l'EL :      ", kEtats,
             static_cast<std::int32_t>(musrValeurCourante));
  bloc.Ajoute(*this, Ou);
}

void SortieLogique::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(4, "*                      Sortie Logique                      *");
  bloc.Texte("Nom de la sortie logique :     ", NomDeLaSortieLogique_);
  bloc.Texte("Index de la sortie logique :   ", Key());
  VideLeCanal(bloc, mobjCanal);
  bloc.Choix("Etat d'activation de la SL :   ", kZéroUn, mblnEtatActivation ? 1 : 0);
  bloc.Choix("Valeur courante de la SL :     ", kEtats, static_cast<std::int32_t>(ValeurCourante_));
  bloc.Ajoute(*this, Ou);
}

void Watchdog::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(4, "*                      Watch dog                           *");
  bloc.Texte("Index du Watch dog :           ", Key());
  bloc.Adresse("Adresse du Watch dog :         ", mlngAdresse);
  bloc.Texte("Nom du Watch dog :             ", mstrNom);
  bloc.Choix("Watch dog Autorisé :           ", kNonOui, mblnEnabled ? 1 : 0);
  bloc.Nombre("Temps du Watch dog :           ", mdblTemps);
  bloc.Choix("Arrêt d'urgence déclenché :    ", kNonOui, mblnAU ? 1 : 0);
  VideLeCanal(bloc, SortiePulse_);
  bloc.Choix("Niveau de la sortie pulse :    ", kZéroUn, mblnNiveauPulse ? 1 : 0);
  bloc.Nombre("Heure du dernier pulse :       ", mdblDernierPulse);
  bloc.Texte("Index du canal de pulse :      ", EstNul(indexPulse_) ? "" : VersTexte(indexPulse_));
  bloc.Choix("Phase de la carte :            ", kZéroUn, mblnPhase ? 1 : 0);
  bloc.Ajoute(*this, Ou);
}

}  // namespace zuma
