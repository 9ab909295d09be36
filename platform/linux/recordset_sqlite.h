#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/base_de_donnees.h"
#include "platform/linux/connexion_sqlite.h"
#include "platform/linux/instructions_preparees.h"
#include "platform/linux/lignes_tassees.h"
#include "platform/linux/valeur_sqlite.h"

namespace zuma::linux_ {

/// The rows of a statement, read when it is opened and standing on the first one. The file is not
/// held between two operations.
///
/// `Update` writes only the columns given to `Ecrit`, to the one row of the same "Index", and only
/// while that row holds in all its columns what was read here. An edit that failed can be tried
/// again. A row with a sum (`base/somme_de_controle.h`) gets its new one with the same save.
class RecordsetSqlite : public Recordset {
 public:
  /// Reads the rows of a selection that has not yet given any; fails as
  /// `BaseSqlite::OpenRecordset` does.
  RecordsetSqlite(std::shared_ptr<ConnexionSqlite> connexion, InstructionPréparée& préparée);

  [[nodiscard]] std::int32_t RecordCount() const override {
    return static_cast<std::int32_t>(lignes_.Nombre());
  }
  void MoveFirst() override;
  /// Fails with 3021 past the end.
  void MoveNext() override;
  [[nodiscard]] bool FinDeTable() const override { return rang_ >= lignes_.Nombre(); }
  [[nodiscard]] std::span<const Champ> Fields() const override;
  [[nodiscard]] std::optional<std::size_t> RangDe(std::string_view colonne) const override {
    return colonnes_->RangDe(colonne);
  }
  /// Fails with 3027 when nothing can be written to the file.
  void Edit() override;
  void Ecrit(std::string_view colonne, Valeur valeur) override;
  /// Fails with 3197, with the values read and found, when another program has changed the row;
  /// 3167 when the row is gone; 53 when the file is.
  void Update() override;

 private:
  using Colonne = ColonnesSqlite::Colonne;
  [[nodiscard]] const Colonne& LaColonne(std::size_t rang) const {
    return colonnes_->Toutes()[rang];
  }
  void LitLesLignes(InstructionSqlite& instruction);
  void LitUneLigne(sqlite3_stmt* instruction);
  void ExigeUneLigne() const;
  void PlaceSur(std::size_t rang);
  // Fields of the current row given to `Ecrit` since `Edit`, by place.
  using Brouillon = std::map<std::size_t, Valeur>;
  [[nodiscard]] std::size_t RangDeLIndex(const std::string& table) const;
  // The row as the file holds it now: fields of that table, by place.
  using Ligne = std::vector<std::pair<std::size_t, Valeur>>;
  [[nodiscard]] Ligne Relit(const std::string& table, const Valeur& index) const;
  void ExigeLaLigneLue(const std::string& table, const Ligne& présente) const;
  void SommeLaLigne(const std::string& table, const Valeur& index, Ligne& écrite) const;
  void EcritLaLigne();

  std::shared_ptr<ConnexionSqlite> connexion_;
  std::shared_ptr<const ColonnesSqlite> colonnes_;  // those of every run of the statement
  LignesTassées lignes_;
  std::size_t rang_ = 0;
  std::vector<Champ> champs_;  // of the current row; the names stay from row to row
  bool enEdition_ = false;
  Brouillon brouillon_;
};

}  // namespace zuma::linux_
