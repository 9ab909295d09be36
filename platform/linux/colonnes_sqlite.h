#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <sqlite3.h>

#include "platform/linux/valeur_sqlite.h"
#include "platform/nom_de_colonne.h"

namespace zuma::linux_ {

/// The columns of a statement, known once for all the recordsets that it gives.
class ColonnesSqlite {
 public:
  /// A column of a statement.
  struct Colonne {
    NomDeColonne nom;                            ///< as the statement shows it
    std::string origine;                         ///< as its table has it; empty when computed
    std::string table;                           ///< name of its table; empty when computed
    TypeColonne type = TypeColonne::Quelconque;  ///< what its table declares
  };

  /// Asks the statement, which need not have been run.
  explicit ColonnesSqlite(sqlite3_stmt* instruction);
  ColonnesSqlite(const ColonnesSqlite&) = delete;
  ColonnesSqlite& operator=(const ColonnesSqlite&) = delete;

  /// All of them, in the order of the statement.
  [[nodiscard]] const std::vector<Colonne>& Toutes() const noexcept { return colonnes_; }
  /// Place of the first one of exactly that name, or none.
  [[nodiscard]] std::optional<std::size_t> RangDe(std::string_view nom) const;

 private:
  std::vector<Colonne> colonnes_;
  std::unordered_map<std::string_view, std::size_t> rangs_;  // by the names above
};

}  // namespace zuma::linux_
