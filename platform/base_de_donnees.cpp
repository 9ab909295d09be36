#include "platform/base_de_donnees.h"

#include <algorithm>

#include "base/cles.h"

namespace zuma {

std::optional<std::size_t> Recordset::RangDe(std::string_view colonne) const {
  const auto champs = Fields();
  const auto champ = std::ranges::find(champs, colonne, &Champ::Name);
  if (champ == champs.end()) return {};
  return static_cast<std::size_t>(champ - champs.begin());
}

const Valeur& LitChamp(const Recordset& lignes, std::string_view colonne, std::source_location où) {
  const Valeur* valeur = ChampNommé(lignes, colonne);
  if (valeur == nullptr) {
    throw Echec(
        Numéro::ElémentAbsent,
        DescriptionDEchec(Numéro::ElémentAbsent) + " : colonne '" + std::string(colonne) + "'", où);
  }
  return *valeur;
}

const Valeur* ChampNommé(const Recordset& lignes, std::string_view colonne) {
  if (const Valeur* exact = ChercheChamp(lignes, colonne)) return exact;
  const auto champs = lignes.Fields();
  const auto champ = std::ranges::find_if(
      champs, [&](const Champ& présent) { return MêmeClé(présent.Name, colonne); });
  return champ == champs.end() ? nullptr : &champ->Value;
}

const Valeur* ChercheChamp(const Recordset& lignes, std::string_view colonne) {
  const auto champs = lignes.Fields();
  const auto rang = lignes.RangDe(colonne);
  return rang ? &champs[*rang].Value : nullptr;
}

}  // namespace zuma
