#include "platform/base_de_donnees.h"

#include <algorithm>

namespace zuma {

const Valeur& LitChamp(const Recordset& lignes, std::string_view colonne, std::source_location où) {
  const Valeur* valeur = ChercheChamp(lignes, colonne);
  if (valeur == nullptr) {
    throw Echec(
        Numéro::ElémentAbsent,
        DescriptionDEchec(Numéro::ElémentAbsent) + " : colonne '" + std::string(colonne) + "'", où);
  }
  return *valeur;
}

const Valeur* ChercheChamp(const Recordset& lignes, std::string_view colonne) {
  const auto champs = lignes.Fields();
  const auto champ = std::ranges::find(champs, colonne, &Champ::Name);
  return champ == champs.end() ? nullptr : &champ->Value;
}

}  // namespace zuma
