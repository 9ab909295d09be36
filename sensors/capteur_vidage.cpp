// Diagnostic dump of a sensor, and its short trace.
#include <algorithm>
#include <array>

#include "base/garde.h"
#include "sensors/capteur.h"
#include "tree/vidage_arbre.h"

namespace zuma {

struct Capteur::Vidage {
  using Champ = ChampVidé<Capteur>;
  /// What the dump tells of a kind; the other kinds have no line of their own.
  struct Genre {
    ENUM_TYPE_CAPTEUR type;
    std::string_view texte;
    bool fils;  ///< made from the children that are named
  };

  static const Genre* De(ENUM_TYPE_CAPTEUR type);
  static void Identité(const Capteur& c, BlocDeVidage& bloc);
  static void Liens(const Capteur& c, const Genre* genre, BlocDeVidage& bloc);
  static void Traitement(const Capteur& c, BlocDeVidage& bloc);
  static void MiseAValeur(const Capteur& c, BlocDeVidage& bloc);
};

const Capteur::Vidage::Genre* Capteur::Vidage::De(ENUM_TYPE_CAPTEUR type) {
  using T = ENUM_TYPE_CAPTEUR;
  static constexpr std::array<Genre, 6> kGenres{{
      {T::capteurNormal, "Normal", false},
      {T::CapteurMoyen, "Moyenne", true},
      {T::CapteurRecouvrement, "Recouvrement", true},
      {T::CapteurContrainte, "Contrainte", true},
      {T::CapteurTemps, "Temps", false},
      {T::CapteurRégression, "Régression", true},
  }};
  const auto genre = std::ranges::find(kGenres, type, &Genre::type);
  return genre == kGenres.end() ? nullptr : &*genre;
}

// The value is the one that was computed, also while the sensor is switched off and reads 0.
void Capteur::Vidage::Identité(const Capteur& c, BlocDeVidage& bloc) {
  static constexpr Champ kChamps[] = {
      {"Valeur courante du capteur :   ", &Capteur::mdblValeurCourante},
      {"Tare du capteur :              ", &Capteur::ValeurTare_},
      {"Maxi détecté sur le capteur :  ", &Capteur::mdblMaxiDétecté},
      {"Mini détecté sur le capteur :  ", &Capteur::mdblMiniDétecté},
      {"Maxi du capteur :              ", &Capteur::MaxiCapteur_},
      {"Mini du capteur :              ", &Capteur::MiniCapteur_},
      {"Unité du capteur :             ", &Capteur::UnitéEtalonnage_},
      {"Date d'étalonnage du capteur : ", &Capteur::DateEtalonnage_},
      {"Nom de l'étalonneur :          ", &Capteur::NomEtalonneur_},
  };
  static constexpr std::string_view kEtats[] = {
      "Correct", "Lecture non valide", "Dépassement non dangereux", "Dépassement dangereux"};
  bloc.Texte("Nom du capteur :               ", c.mstrNom);
  bloc.Texte("Index du capteur :             ", c.Key());
  bloc.Champs<Capteur>(c, kChamps);
  bloc.Choix("Etat du capteur :              ", kEtats, static_cast<std::int32_t>(c.musrEtat));
}

void Capteur::Vidage::Liens(const Capteur& c, const Genre* genre, BlocDeVidage& bloc) {
  static constexpr std::string_view kRaz[] = {"Interdite", "Autorisée"};
  if (c.musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::capteurNormal) VideLeCanal(bloc, c.mobjCanal);
  bloc.Nombre("Seuil de lecture non valide :  ", c.mdblSeuilDeLectureNonValide);
  bloc.Choix("Raz du capteur :               ", kRaz, c.RazAutorise_bln_ ? 1 : 0);
  if (genre != nullptr && genre->fils) {
    bloc.Noms("Capteur Fils connecté :        ", c.CapteursFils_);
  }
  bloc.Choix("Arrêt en cas de dépassement du capteur :    ", kNonOui,
             c.mblnArrêtSiDépassement ? 1 : 0);
  bloc.Nombre("Nombre de lecture pour MAV :   ", c.mlngNbLecturePourRAZ);
  if (genre != nullptr) bloc.Texte("Type de capteur :              ", genre->texte);
}

void Capteur::Vidage::Traitement(const Capteur& c, BlocDeVidage& bloc) {
  static constexpr Champ kChamps[] = {
      {"Offset du capteur :            ", &Capteur::ValeurDeRAZ_mdbl},
      {"Tps d'intégration du capteur : ", &Capteur::mdblTempsIntégration},
      {"Sécu mini en unité capteur :   ", &Capteur::mdblSécuritéMiniEnUnité},
      {"Sécu maxi en unité capteur :   ", &Capteur::mdblSécuritéMaxiEnUnité},
      {"Sécu mini en point capteur :   ", &Capteur::mdblSécuritéMiniEnPoints},
      {"Sécu maxi en point capteur :   ", &Capteur::mdblSécuritéMaxiEnPoints},
  };
  // No column reaches these two and nothing else writes them; readers of dumps expect the lines.
  bloc.Nombre("Gain du capteur :              ", 0);
  bloc.Nombre("Nbre de lecture simumltanées : ", 0);
  bloc.Champs<Capteur>(c, kChamps);
  for (std::int16_t n = 0; n <= TableEtalonnage::kMaxPoints; ++n) {
    bloc.Point(n, "capteur :    ", c.table_.PointX(n), c.table_.PointY(n));
  }
}

void Capteur::Vidage::MiseAValeur(const Capteur& c, BlocDeVidage& bloc) {
  static constexpr Champ kChamps[] = {
      {"Valeur courante en points du capteur :  ", &Capteur::mdblValeurCouranteEnPoints},
      {"Somme pour MAV :                        ", &Capteur::mdblSommeCanalPourMAV},
      {"Nombre de lecture effectuée pour MAV :  ", &Capteur::mintNbLectureEffectuées},
  };
  static constexpr std::string_view kOpération = "Opération courante de MAV :             ";
  static constexpr std::string_view kOpérations[] = {"Rien à faire", "Acquisition", "Calcul"};
  const auto opération = static_cast<std::int32_t>(c.musrOpérationCouranteDeRAZ);
  bloc.Champs<Capteur>(c, kChamps);
  bloc.Choix(kOpération, kOpérations, opération);
  bloc.Nombre(kOpération, opération);
  bloc.Nombre("Ancienne valeur en points :             ", c.mdblAncienneValeurEnPoints);
  bloc.Nombre("Ancien Temps :                          ", c.mdblAncienTemps);
  if (c.musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurTemps) {
    bloc.Nombre("Départ capteur temps :                  ", c.mdblDépartCapteurTemps);
  }
}

void Capteur::AutoSave(const std::string& Ou) const {
  BlocDeVidage bloc(4, "*                          Capteur                         *");
  Vidage::Identité(*this, bloc);
  Vidage::Liens(*this, Vidage::De(musrTypeDeCapteur), bloc);
  Vidage::Traitement(*this, bloc);
  Vidage::MiseAValeur(*this, bloc);
  bloc.Ajoute(*this, Ou);
}

void Capteur::Espion(std::int16_t intNumFich) const {
  Garde(
      *this, Forme::Méthode, "Espion",
      [&] {
        Fichiers& fichiers = *LaPlateforme().fichiers;
        const std::string début[] = {"", "********************* Capteur *********************",
                                     "Nom du capteur                : " + mstrNom,
                                     "Index du capteur              : " + Key()};
        fichiers.EcritBloc(intNumFich, début);
        const std::string canal[] = {"Nom du canal                  : " + mobjCanal->Nom()};
        fichiers.EcritBloc(intNumFich, canal);
      },
      [&](Variables& v) {
        v.Ajoute("intNumFich", intNumFich);
        v.Ajoute("mstrNom", mstrNom);
        v.Ajoute("Key", Key());
        if (mobjCanal) {
          v.Ajoute("mobjCanal.Nom", mobjCanal->Nom());
        } else {
          v.AjouteVide();
        }
      });
}

}  // namespace zuma
