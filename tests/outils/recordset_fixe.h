#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/base_de_donnees.h"

// Rows given by the test, and a database that answers statements with them.
namespace zuma::essai {

using Ligne = std::vector<Champ>;

inline Valeur Texte(std::string texte) {
  return Valeur(std::move(texte));
}

/// Recordset over rows in memory. `Update` keeps what was written, unless `panne` is set.
class RecordsetFixe : public Recordset {
 public:
  explicit RecordsetFixe(std::vector<Ligne> donnée) : lignes(std::move(donnée)) {}

  [[nodiscard]] std::int32_t RecordCount() const override {
    return static_cast<std::int32_t>(lignes.size());
  }
  void MoveFirst() override {
    if (lignes.empty()) throw Echec(Numéro::PasDEnregistrement);
    rang = 0;
  }
  void MoveNext() override { ++rang; }
  [[nodiscard]] bool FinDeTable() const override { return rang >= lignes.size(); }
  [[nodiscard]] std::span<const Champ> Fields() const override {
    if (FinDeTable()) throw Echec(Numéro::PasDEnregistrement);
    return lignes[rang];
  }
  void Edit() override { brouillon = lignes.at(rang); }
  void Ecrit(std::string_view colonne, Valeur valeur) override {
    const auto champ = std::ranges::find(brouillon, colonne, &Champ::Name);
    if (champ == brouillon.end()) throw Echec(Numéro::ElémentAbsent);
    champ->Value = std::move(valeur);
  }
  void Update() override {
    if (panne) throw Echec(*panne);
    lignes[rang] = brouillon;
  }

  std::vector<Ligne> lignes;
  Ligne brouillon;
  std::size_t rang = 0;
  std::optional<Numéro> panne;
};

/// One row as a recordset.
inline Ref<Recordset> UneLigne(Ligne ligne) {
  return Crée<RecordsetFixe>(std::vector<Ligne>{std::move(ligne)});
}

/// The same row with one field replaced, added at the end when missing.
inline Ligne Avec(Ligne ligne, std::string_view colonne, Valeur valeur) {
  auto champ = std::ranges::find(ligne, colonne, &Champ::Name);
  if (champ == ligne.end()) champ = ligne.insert(champ, Champ{std::string(colonne), {}});
  champ->Value = std::move(valeur);
  return ligne;
}

/// The same row with several fields replaced or added.
inline Ligne Avec(Ligne ligne, const Ligne& champs) {
  for (const auto& [colonne, valeur] : champs) ligne = Avec(std::move(ligne), colonne, valeur);
  return ligne;
}

/// The same row without one column.
inline Ligne Sans(Ligne ligne, std::string_view colonne) {
  std::erase_if(ligne, [&](const Champ& champ) { return champ.Name == colonne; });
  return ligne;
}

/// Answers each statement with the rows registered for it; any other is refused.
class BaseFixe : public BaseDeDonnées {
 public:
  [[nodiscard]] Ref<Recordset> OpenRecordset(std::string_view instruction, int) override {
    const auto réponse = réponses.find(std::string(instruction));
    if (réponse == réponses.end()) throw Echec(Numéro::InstructionRefusée);
    return Crée<RecordsetFixe>(réponse->second);
  }
  std::map<std::string, std::vector<Ligne>> réponses;
};

}  // namespace zuma::essai
