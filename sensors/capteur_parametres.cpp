// Reading of a sensor's row, column by column in the order of its table.
#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include "base/colonnes.h"
#include "base/garde.h"
#include "base/somme_de_controle.h"
#include "base/table_lue.h"
#include "sensors/capteur_genres.h"

namespace zuma {

using colonnes::LitBooléen;
using colonnes::LitEntier32;
using colonnes::LitNombre;
using colonnes::LitTexte;
using colonnes::SaufNul;
using OutilsCommuns::LitChampSûr;

namespace {

// Of the parameters, by their columns.
const auto& RangsDesParamètres() {
  static const auto rangs = [] {
    std::unordered_map<std::string_view, std::size_t> parColonne;
    for (const LigneParamètre& l : kLignesParamètres)
      parColonne.emplace(l.colonne, parColonne.size());
    return parColonne;
  }();
  return rangs;
}

}  // namespace

/// The columns of a sensor's row and what is made of them.
struct Capteur::Lecture {
  using Colonne = colonnes::Colonne<Capteur>;

  template <auto kChamp>
  static void TexteOuVide(Capteur& c, const Valeur& v) {
    c.*kChamp = EstNul(v) ? std::string() : VersTexte(v);
  }

  static void Type(Capteur& c, const Valeur& v) {
    if (const Genre* genre = Genre::DeTexte(VersTexte(v))) c.TypeDeCapteur(genre->type);
  }
  static void NombreDeLectures(Capteur& c, const Valeur& v) {
    c.mlngNbLecturePourRAZ = std::max(VersEntier32(LitChampSûr(v)), 1);
  }
  // The column must hold a number and reaches nothing.
  static void LecturesSimultanées(Capteur&, const Valeur& v) { (void)VersEntier16(LitChampSûr(v)); }
  static void ValeurDeSélection(Capteur& c, const Valeur& v) {
    if (!EstNul(v)) {
      c.mstrValeurSelection = VersTexte(v);
    } else if (c.musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurSelectionnable) {
      c.Montre("Sensor '" + c.mstrNom + "' : 'Valeur de selection' not define.");
    }
  }

  static void Directes(Capteur& c, const Recordset& ligne, std::span<const Colonne> colonnes);
  static void Cherchées(Capteur& c, const Recordset& ligne, std::span<const Colonne> colonnes);
  static void Recouvrement(Capteur& c, const Recordset& ligne);
  static void Parcours(Capteur& c, const Recordset& ligne);
  static void Tout(Capteur& c, const Recordset& ligne);
};

void Capteur::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet,
                                 double FréquenceRafraichissement) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    LeRecordset_ = rstMonRecordSet;
    mdblFréquenceRafraichissement = FréquenceRafraichissement;
    rstMonRecordSet->MoveFirst();
    Lecture::Tout(*this, *rstMonRecordSet);
    if (!SommeTient(*rstMonRecordSet)) Montre(LigneChangée("Le capteur", mstrNom));
  });
}

// Columns that must exist: a missing one is a failure.
void Capteur::Lecture::Directes(Capteur& c, const Recordset& ligne,
                                std::span<const Colonne> colonnes) {
  for (const Colonne& colonne : colonnes) colonne.Lit(c, LitChamp(ligne, colonne.nom));
}

// Columns that may exist.
void Capteur::Lecture::Cherchées(Capteur& c, const Recordset& ligne,
                                 std::span<const Colonne> colonnes) {
  for (const Colonne& colonne : colonnes) {
    const Valeur* champ = ChercheChamp(ligne, colonne.nom);
    if (champ != nullptr) colonne.Lit(c, *champ);
  }
}

void Capteur::Lecture::Tout(Capteur& c, const Recordset& ligne) {
  using C = Capteur;
  static constexpr std::array<Colonne, 2> kNom{{
      {"Type de Capteur", &Type},
      {"Nom du Capteur", &LitTexte<&C::mstrNom>},
  }};
  static constexpr std::array<Colonne, 14> kMesure{{
      {"Seuil de Lecture Non Valide", &LitNombre<&C::mdblSeuilDeLectureNonValide>},
      {"Remise à Zéro Autorisée", &LitBooléen<&C::RazAutorise_bln_>},
      {"Arrêt en Cas de Dépassement des sécurités", &LitBooléen<&C::mblnArrêtSiDépassement>},
      {"Nombre de Lecture pour une Mise à Valeur", &NombreDeLectures},
      {"Temps d'Intégration du Canal", &LitNombre<&C::mdblTempsIntégration>},
      {"Nombre de Lecture Simultanée", &LecturesSimultanées},
      {"Sécurité Minimale en Unité", &LitNombre<&C::mdblSécuritéMiniEnUnité>},
      {"Sécurité Maximale en Unité", &LitNombre<&C::mdblSécuritéMaxiEnUnité>},
      {"Sécurité Minimale en Points", &LitNombre<&C::mdblSécuritéMiniEnPoints>},
      {"Sécurité Maximale en Points", &LitNombre<&C::mdblSécuritéMaxiEnPoints>},
      {"Unité d'Etalonnage", &LitTexte<&C::UnitéEtalonnage_>},
      {"Date d'Etalonnage", &LitTexte<&C::DateEtalonnage_>},
      {"Nom de l'Etalonneur", &LitTexte<&C::NomEtalonneur_>},
      {"Temps de Calcul de la Vitesse", &SaufNul<&LitNombre<&C::mdblTempsCalculVitesse>>},
  }};
  static constexpr std::array<Colonne, 1> kMaximum{{
      {"Texte pour le maximum", &SaufNul<&LitTexte<&C::TexteMaxi_>>},
  }};
  static constexpr std::array<Colonne, 2> kOpérateurEtLigne{{
      {"Opérateur", &TexteOuVide<&C::Operateur_str_>},
      {"Configuration RS", &TexteOuVide<&C::mstrConfigurationRS>},
  }};
  static constexpr std::array<Colonne, 4> kSélection{{
      {"Valeur de selection", &ValeurDeSélection},
      {"EL de selection", &SaufNul<&LitTexte<&C::mstrLabelELSelection>>},
      {"Etat EL de selection", &SaufNul<&LitTexte<&C::mstrEtatELSelection>>},
      {"Age maximal (s)", &SaufNul<&LitNombre<&C::mdblAgeMaximal>>},
  }};

  c.particulier_ = true;
  Directes(c, ligne, kNom);
  const Valeur* affiché = ChercheChamp(ligne, "Nom affiché");
  if (affiché == nullptr) {
    c.NomAfficheDuCapteur_.clear();
  } else {
    c.NomAfficheDuCapteur_ = EstNul(*affiché) ? c.mstrNom : VersTexte(*affiché);
  }
  Directes(c, ligne, kMesure);
  // A sensor from a channel takes its limits here, as its start will again: the sensors made from
  // it find them at link time, whatever the order.
  if (c.musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::capteurNormal) Calcul::PrendLesLimites(c);
  colonnes::LitTable(ligne, c.table_);
  Directes(c, ligne, kMaximum);
  // Column "Détection du maxi" can only switch detection on, and it is on already.
  c.AutoriseDétectionMaxi_ = true;
  Cherchées(c, ligne, kOpérateurEtLigne);
  if (!c.mstrConfigurationRS.empty()) c.LitLaConfigurationRS();
  Recouvrement(c, ligne);
  Cherchées(c, ligne, kSélection);
  Parcours(c, ligne);
}

void Capteur::LitLaConfigurationRS() {
  constexpr FormeDeLigne kForme{.dernierPort = 4, .casseIndifférente = true};
  const auto parties = Découpe(mstrConfigurationRS, ',');
  if (!LitRéglagesLigne(parties, kForme, réglagesRS_)) {
    Montre("Not supported Baud Rate in 'ParametrageDepuisBD' from object 'Capteur' named '" +
           mstrNom + ". Default baud rate : 9600");
  }
  if (parties.size() < kPartiesDeLigne) throw Echec(Numéro::IndiceHorsPlage);
}

void Capteur::Lecture::Recouvrement(Capteur& c, const Recordset& ligne) {
  struct Seuil {
    Colonne colonne;
    std::int32_t défaut;
    std::string_view invalide;  // around the sensor's name
    std::string_view correction;
    std::string_view format;
  };
  static constexpr std::array<Seuil, 3> kSeuils{{
      {{"Recouvrement - Seuil bas %", &LitNombre<&Capteur::mdblSeuilBasPourCent>},
       80,
       "Le seuil bas du capteur de recouvrement nommé '",
       "' est invalide. Il est mis à 80%.",
       " : REEL DOUBLE"},
      {{"Recouvrement - Seuil haut %", &LitNombre<&Capteur::mdblSeuilHautPourCent>},
       90,
       "Le seuil haut du capteur de recouvrement nommé '",
       "' est invalide. Il est mis à 90%.",
       " : REEL DOUBLE"},
      {{"Recouvrement - Mini valeur pour recouvrement", &LitEntier32<&Capteur::mlngNbValeursMini>},
       1,
       "Le nombre de valeur mini pour le recouvrement du capteur de nommé '",
       "' est invalide. Ils est mis à 1.",
       " : ENTIER LONG"},
  }};
  // A table that has the first of the three columns is never told that another one is missing.
  const bool annoncées = ChercheChamp(ligne, kSeuils[0].colonne.nom) == nullptr;
  for (const Seuil& seuil : kSeuils) {
    const Valeur* champ = ChercheChamp(ligne, seuil.colonne.nom);
    if (champ != nullptr && !EstNul(*champ)) {
      seuil.colonne.Lit(c, *champ);
    } else if (champ != nullptr && c.musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurRecouvrement) {
      c.Montre(std::string(seuil.invalide) + c.mstrNom + std::string(seuil.correction));
      seuil.colonne.Lit(c, Valeur(seuil.défaut));
    } else if (champ == nullptr && annoncées) {
      c.Montre("Le champs '" + std::string(seuil.colonne.nom) +
               "' n'existe pas. Veuillez le créer avec le format suivant" +
               std::string(seuil.format));
    }
  }
}

// Children, channel and parameters, in one walk over the fields: the order of the child columns is
// the order of the children.
void Capteur::Lecture::Parcours(Capteur& c, const Recordset& ligne) {
  static constexpr std::string_view kFils = "Capteur Fils N° ";
  static constexpr std::array<Colonne, 3> kAutres{{
      {"Canal", &LitEntier32<&Capteur::mlngIndexCanal>},
      {"Etalonnage par utilisateur", &LitBooléen<&Capteur::EtalonnageExterieurPossible_>},
      {"Commentaire etalonnage", &LitTexte<&Capteur::CommentaireEtalonnage_>},
  }};
  c.mastrLabelsFils.clear();
  for (const Champ& champ : ligne.Fields()) {
    if (EstNul(champ.Value)) continue;
    if (champ.Name.Texte().find(kFils) != std::string::npos) {
      c.mastrLabelsFils.push_back(VersTexte(champ.Value));
    }
    for (const Colonne& colonne : kAutres) {
      if (champ.Name == colonne.nom) colonne.Lit(c, champ.Value);
    }
    const auto paramètre = RangsDesParamètres().find(champ.Name);
    if (paramètre == RangsDesParamètres().end()) continue;
    c.paramètres_.Index(paramètre->second, colonnes::Entier32(champ.Value, champ.Name));
  }
}

}  // namespace zuma
