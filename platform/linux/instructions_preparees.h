#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/linux/colonnes_sqlite.h"
#include "platform/linux/connexion_sqlite.h"

namespace zuma::linux_ {

/// A selection, ready to be run again and again, and its columns.
struct InstructionPréparée {
  /// Fails like `InstructionSqlite`, and with 3075 on what is no selection.
  InstructionPréparée(const ConnexionSqlite& connexion, std::string_view sql);

  InstructionSqlite instruction;  ///< at its beginning, or where its last run left it
  std::shared_ptr<const ColonnesSqlite> colonnes;  ///< of every run
};

/// The statements of one read transaction. A load asks for each of its hundreds of objects with one
/// of a dozen statements, and to read such a statement costs more than to run it. Their columns are
/// those of the beginning: it must not outlive the transaction, in which no table changes.
class InstructionsPréparées {
 public:
  /// That statement of the system's dialect, at its beginning. It is run before the next one is
  /// asked for. Fails as its preparation does, and with 3059 when no more is to be read: found
  /// within a few statements.
  [[nodiscard]] InstructionPréparée& Donne(const ConnexionSqlite& connexion,
                                           std::string_view instruction);

 private:
  std::unordered_map<std::string, InstructionPréparée> formes_;
  unsigned demandes_ = 0;
};

}  // namespace zuma::linux_
