// Reading of a logic input's row.
#include <algorithm>
#include <array>

#include "base/colonnes.h"
#include "base/garde.h"
#include "core/collections.h"
#include "logic/entree_logique.h"
#include "logic/etat_activation.h"

namespace zuma {
namespace {

struct Niveau {
  std::string_view texte;
  ENUM_ETAT_AU_LOGIQUE niveau;
};

constexpr std::array<Niveau, 3> kNiveaux{{
    {"Aucun", ENUM_ETAT_AU_LOGIQUE::Aucun},
    {"Activé", ENUM_ETAT_AU_LOGIQUE::Activé},
    {"Désactivé", ENUM_ETAT_AU_LOGIQUE::Désactivé},
}};

constexpr std::string_view kColonneNiveau = "Niveau d'Arrêt d'Urgence";
constexpr std::string_view kColonneAntiRebond = "Durée Anti-Rebond (s)";
constexpr std::string_view kColonneSiRien = "Etat si rien de connecte";

// In the order of the input's parameters.
constexpr std::array<std::string_view, 4> kColonnesParamètres{
    "Parametre Etat", "Parametre Etat Actif", "Parametre Etat Inactif", "Parametre Defaut"};

}  // namespace

void EntréeLogique::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Garde(*this, Forme::Procédure, "ParamètresDepuisBD", [&] {
    Recordset& ligne = *rstMonRecordSet;
    ligne.MoveFirst();
    NomDeEntréeLogique_ = colonnes::Texte(ligne, "Nom de l'Entrée Logique");
    LitEtatDActivation(ligne, mblnEtatActivation);
    const Valeur& niveau = LitChamp(ligne, kColonneNiveau);
    const Valeur* touche = ChercheChamp(ligne, "Touche");
    if (touche != nullptr && !EstNul(*touche)) Touche_ = colonnes::Texte(*touche, "Touche");
    LitLesChamps(ligne);
    // Before the time of the filter, whose failure must not cost the stop.
    const bool connu = PrendLeNiveauDAU(niveau);
    const Valeur* durée = ChercheChamp(ligne, kColonneAntiRebond);
    if (durée != nullptr && !EstNul(*durée)) {
      mdblAntiRebond = colonnes::Nombre(*durée, kColonneAntiRebond);
    }
    // A text that is misspelt or missing must not turn a stop off without a word.
    if (!connu) {
      throw Echec(Numéro::TypeIncompatible, DescriptionDEchec(Numéro::TypeIncompatible) +
                                                " : colonne '" + std::string(kColonneNiveau) +
                                                "', '" +
                                                (EstNul(niveau) ? "Null" : VersTexte(niveau)) +
                                                "' n'est ni 'Aucun', ni 'Activé', ni 'Désactivé'");
    }
  });
}

bool EntréeLogique::PrendLeNiveauDAU(const Valeur& niveau) {
  const auto* texte = std::get_if<std::string>(&niveau);
  if (texte == nullptr) return false;
  const auto connu = std::ranges::find(kNiveaux, *texte, &Niveau::texte);
  if (connu == kNiveaux.end()) return false;
  musrEtatAU = connu->niveau;
  mblnAutoriseAU = connu->niveau != ENUM_ETAT_AU_LOGIQUE::Aucun;
  return true;
}

// The state with nothing connected survives only as the last column of the table: every other
// column behind it puts it back. Configurations count on it.
void EntréeLogique::LitLesChamps(const Recordset& ligne) {
  for (const auto& [colonne, valeur] : ligne.Fields()) {
    if (MêmeClé(colonne, kColonneSiRien)) {
      if (EstNul(valeur)) {
        musrEtatSiRien = ENUM_ETAT_LOGIQUE::Inconnu;
      } else {
        musrEtatSiRien = valeur == Valeur(std::string("Actif")) ? ENUM_ETAT_LOGIQUE::Actif
                                                                : ENUM_ETAT_LOGIQUE::Inactif;
      }
      continue;
    }
    musrEtatSiRien = ENUM_ETAT_LOGIQUE::Inconnu;
    if (EstNul(valeur)) continue;
    if (colonne == "Canal") indexCanal_ = valeur;
    for (std::size_t i = 0; i < kColonnesParamètres.size(); ++i) {
      if (MêmeClé(colonne, kColonnesParamètres[i])) paramètres_[i].index = valeur;
    }
  }
}

}  // namespace zuma
