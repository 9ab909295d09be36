// Reading of a command's row.
#include <algorithm>
#include <array>

#include "base/colonnes.h"
#include "base/garde.h"
#include "base/outils_communs.h"
#include "base/somme_de_controle.h"
#include "base/table_lue.h"
#include "commands/commande.h"

namespace zuma {
namespace {

struct TexteDeType {
  std::string_view texte;
  ENUM_TYPE_COMMANDE type;
};

constexpr std::array<TexteDeType, 4> kTypes{{
    {"Normale", ENUM_TYPE_COMMANDE::Normale},
    {"Tout ou Rien", ENUM_TYPE_COMMANDE::ToutOuRien},
    {"Servo", ENUM_TYPE_COMMANDE::Servo},
    {"Recopie", ENUM_TYPE_COMMANDE::Recopie},
}};

// A text that is none of these is tolerated: such a command takes no action.
ENUM_TYPE_COMMANDE TypeDuTexte(const Valeur& valeur) {
  const auto* texte = std::get_if<std::string>(&valeur);
  if (texte == nullptr) return ENUM_TYPE_COMMANDE::Aucune;
  const auto type = std::ranges::find(kTypes, *texte, &TexteDeType::texte);
  return type == kTypes.end() ? ENUM_TYPE_COMMANDE::Aucune : type->type;
}

template <class T>
struct Colonne {
  std::string_view nom;
  T Commande::* champ;
};

}  // namespace

// The columns that a row may lack, each passed over when Null.
struct Commande::Colonnes {
  static constexpr std::array<Colonne<std::string>, 6> kTextes{{
      {"Capteur Alimentation", &Commande::labelAlimentation_},
      {"Capteur Utilisation", &Commande::labelUtilisation_},
      {"Sortie Logique 1", &Commande::labelSortie1_},
      {"Sortie Logique 2", &Commande::labelSortie2_},
      {"Commentaire etalonnage", &Commande::CommentaireEtalonnage_},
      {"Capteur de recopie", &Commande::labelRecopie_},
  }};
  static constexpr std::array<Colonne<std::int32_t>, 2> kIndex{{
      {"Canal", &Commande::indexCanal_},
      {"Paramètre", &Commande::indexParamètre_},
  }};
};

void Commande::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    rstMonRecordSet->MoveFirst();
    LeRecordset_ = rstMonRecordSet;
    LitLigne(*rstMonRecordSet);
    if (!SommeTient(*rstMonRecordSet)) Montre(LigneChangée("La commande", NomDeLaCommande_));
  });
}

void Commande::LitLigne(const Recordset& ligne) {
  NomDeLaCommande_ = colonnes::Texte(ligne, "Nom de la Commande");
  mdblValeurInitiale = colonnes::Nombre(ligne, "Valeur Initiale");
  DateEtalonnage_ = colonnes::Texte(ligne, "Date d'Etalonnage");
  NomEtalonneur_ = colonnes::Texte(ligne, "Nom de l'Etalonneur");
  UnitéEtalonnage_ = colonnes::Texte(ligne, "Unité d'Etalonnage");
  TypeCommande_ = TypeDuTexte(LitChamp(ligne, "Type de Commande"));
  mdblSécuritéMiniEnUnité = colonnes::Nombre(ligne, "Sécurité Minimale en Unité");
  mdblSécuritéMaxiEnUnité = colonnes::Nombre(ligne, "Sécurité Maximale en Unité");
  mdblSécuritéMiniEnPoints = colonnes::Nombre(ligne, "Sécurité Minimale en Points");
  mdblSécuritéMaxiEnPoints = colonnes::Nombre(ligne, "Sécurité Maximale en Points");
  const auto litSiDonné = [&](std::string_view colonne, double& champ) {
    const Valeur valeur = OutilsCommuns::LitChampSûr(LitChamp(ligne, colonne));
    if (!EstNul(valeur) && VersDouble(valeur) != 0) champ = VersDouble(valeur);
  };
  litSiDonné("Fréquence dither", FréquenceDither_);
  litSiDonné("Amplitude dither", AmplitudeDither_);
  colonnes::LitTable(ligne, table_);
  for (const auto& [nom, champ] : Colonnes::kTextes) {
    const Valeur* valeur = ChercheChamp(ligne, nom);
    if (valeur != nullptr && !EstNul(*valeur)) this->*champ = colonnes::Texte(*valeur, nom);
  }
  for (const auto& [nom, champ] : Colonnes::kIndex) {
    const Valeur* valeur = ChercheChamp(ligne, nom);
    if (valeur != nullptr && !EstNul(*valeur)) this->*champ = colonnes::Entier32(*valeur, nom);
  }
}

}  // namespace zuma
