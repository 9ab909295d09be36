#pragma once

#include <string>
#include <vector>

#include "outils/recordset_fixe.h"
#include "outils/temoins.h"
#include "tree/carte.h"

// Boards, blocks and channels made from rows in memory.
namespace zuma::essai {

inline Valeur Nombre(std::int32_t n) {
  return Valeur(n);
}

/// Key of the channel of that number in a block made by `AjouteBloc`.
inline std::string CléDuCanal(std::int32_t numéro) {
  return std::to_string(numéro + 10);
}

/// Adds a block with channels of these numbers to a board, from the rows that a database would
/// give. `ligne` is the block's row.
inline FonctionRef AjouteBloc(Carte& carte, const std::string& clé, const Ligne& ligne,
                              const std::vector<std::int32_t>& numéros, const Ref<ZED_Timer>& timer,
                              const Ref<ZED_Erreur>& registre) {
  const FonctionRef bloc = carte.Fonctions()->Add(clé);
  bloc->TimerExact(timer);
  bloc->ChargeErreur(registre);
  const auto base = Crée<BaseFixe>();
  std::vector<Ligne> liste;
  for (const std::int32_t n : numéros) {
    liste.push_back({{"Index", Nombre(n + 10)}});
    base->réponses["SELECT ALL * FROM [Canal] WHERE (([Canal]![Index])= " + CléDuCanal(n) + ")"] = {
        {{"Numéro du Canal", Nombre(n)}, {"Nom du Canal", Texte("c")}}};
  }
  base->réponses
      ["SELECT [Index], [Nom du Canal] FROM Canal WHERE ((Canal![Fonction])=1) ORDER BY "
       "[Canal].[Numéro du Canal]"] = liste;
  bloc->ChargeLesCanaux(base, 1);
  bloc->ParamètresDepuisBD(UneLigne(ligne));
  bloc->Parent(&carte);
  return bloc;
}

/// Reads the row of a board.
inline void LitCarte(Carte& carte, const char* driver, const char* configuration,
                     const char* adresse = "0") {
  carte.ParamètresDepuisBD(UneLigne({{"Adresse", Texte(adresse)},
                                     {"Nom de la Carte", Texte("Carte")},
                                     {"Driver de la Carte", Texte(driver)},
                                     {"Configuration ModBus", Texte(configuration)},
                                     {"Config EIR", Texte("")}}));
}

}  // namespace zuma::essai
