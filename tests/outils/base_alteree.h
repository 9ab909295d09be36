#pragma once

#include <optional>
#include <string>

#include "outils/recordset_fixe.h"

namespace zuma::essai {

/// A real database with one column of one table spoiled in every row: taken away, or set to a
/// value that does not belong there.
class BaseAltérée : public BaseDeDonnées {
 public:
  BaseAltérée(Ref<BaseDeDonnées> vraie, std::string table, std::string colonne,
              std::optional<Valeur> valeur)
      : vraie_(std::move(vraie)),
        table_(std::move(table)),
        colonne_(std::move(colonne)),
        valeur_(std::move(valeur)) {}

  [[nodiscard]] Ref<Recordset> OpenRecordset(std::string_view instruction, int type) override {
    const Ref<Recordset> lignes = vraie_->OpenRecordset(instruction, type);
    // The table behind FROM, bracketed or not; a join names its tables there too.
    const std::size_t de = instruction.find("FROM ");
    const std::string_view source = instruction.substr(de, table_.size() + 7);
    const bool visée =
        source == "FROM [" + table_ + "]" || source.starts_with("FROM " + table_ + " ");
    std::vector<Ligne> copie;
    for (; !lignes->FinDeTable(); lignes->MoveNext()) {
      const auto champs = lignes->Fields();
      Ligne ligne(champs.begin(), champs.end());
      if (visée && !valeur_) ligne = Sans(ligne, colonne_);
      for (Champ& champ : ligne) {
        if (visée && champ.Name == colonne_) champ.Value = *valeur_;
      }
      copie.push_back(std::move(ligne));
    }
    return Crée<RecordsetFixe>(std::move(copie));
  }

 private:
  Ref<BaseDeDonnées> vraie_;
  std::string table_;
  std::string colonne_;
  std::optional<Valeur> valeur_;
};

}  // namespace zuma::essai
