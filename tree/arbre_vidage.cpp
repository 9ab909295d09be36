// Diagnostic dump of the hardware tree: board, block, channel.
#include "base/vidage.h"
#include "tree/carte.h"

namespace zuma {
namespace {

/// By `ENUM_TYPE_FONCTION`.
constexpr std::string_view kTypes[] = {"", "Entrées Logiques", "Sorties Logiques",
                                       "Entrées Analogiques", "Sorties Analogiques"};

// A driver without a name for people has no line.
void VideLeDriver(BlocDeVidage& bloc, const LigneDriver& ligne) {
  if (!ligne.affichage.empty()) bloc.Texte("Driver de la fonction :        ", ligne.affichage);
}

}  // namespace

void Carte::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(4, "*                          Carte                           *");
  bloc.Texte("Nom de la Carte :              ", NomDeLaCarte_);
  bloc.Adresse("Adresse de la Carte :          ", Adresse_);
  bloc.Noms("Nom de la fonction :           ", Fonctions_);
  bloc.Ajoute(*this, Ou);
  VideLesMembres(Fonctions_, Ou);
}

void Fonction::AutoSave(const std::string& Ou) const {
  static constexpr std::string_view kMiseAJour[] = {"Par Canal", "Par Fonction"};
  BlocDeVidage bloc(6, "*                         Fonction                         *");
  bloc.Texte("Nom de la Fonction :           ", NomDeLaFonction_);
  bloc.Choix("Type de Fonction :             ", kTypes, static_cast<std::int32_t>(TypeDeFonction_));
  bloc.Choix("Mise à jour de Fonction :      ", kMiseAJour, MAJParFonction_mbln ? 1 : 0);
  bloc.Nombre("Nombre de lecture simultanée : ", mintNbLecture);
  VideLeDriver(bloc, *ligne_);
  bloc.Adresse("Adresse de la fonction :       ", mlngAdresse);
  bloc.Noms("Nom du canal :                 ", Canals_);
  bloc.Ajoute(*this, Ou);
  VideLesMembres(Canals_, Ou);
}

void Canal::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(8, "*                          Canal                           *");
  bloc.Texte("Nom du Canal :                 ", Nom_);
  bloc.Nombre("Numéro du Canal :              ", NuméroCanal_);
  bloc.Nombre("Gain du Canal :                ", mintGain);
  bloc.Nombre("Nombre de lecture simultanée : ", mintNbLecture);
  bloc.Nombre("Valeur du Canal :              ", mdblValeurCanal);
  bloc.Adresse("Adresse du Canal :             ", mlngAdresse);
  bloc.Choix("Type de Canal :                ", kTypes, static_cast<std::int32_t>(musrTypeCanal));
  VideLeDriver(bloc, *ligne_);
  bloc.Ajoute(*this, Ou);
}

}  // namespace zuma
