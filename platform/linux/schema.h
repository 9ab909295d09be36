#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/valeur_sqlite.h"

namespace zuma::linux_ {

/// One column of the configuration.
struct ColonneDuSchéma {
  std::string nom;                        ///< name, as it stands in the file
  TypeColonne type = TypeColonne::Texte;  ///< type of its values
  bool requise = false;  ///< read by name: a table without it fails the load of its objects
  bool nulAdmis = true;  ///< false where a Null fails the load of the row
  std::string défaut;    ///< as SQL; empty for none
};

/// One table of the configuration: the rows of a class of objects, or of the links of one.
struct TableDuSchéma {
  std::string_view nom;                   ///< name, as it stands in the file
  std::string_view objetLié;              ///< class word of the objects, as in error messages
  bool liaison = false;                   ///< ties the objects to frames
  std::vector<ColonneDuSchéma> colonnes;  ///< in the order of a new file

  /// The column of exactly that name, or none.
  [[nodiscard]] const ColonneDuSchéma* TrouveColonne(std::string_view colonne) const noexcept;
};

/// Every table, with every column that the system reads or writes, in the order of a new file.
[[nodiscard]] std::span<const TableDuSchéma> TablesDuSchéma();

/// The table of exactly that name, or none.
[[nodiscard]] const TableDuSchéma* TrouveTable(std::string_view nom);

/// The statement that creates the table. "Index" is its key.
[[nodiscard]] std::string InstructionDeCréation(const TableDuSchéma& table);

/// The type as it is declared in a file.
[[nodiscard]] std::string_view NomDeType(TypeColonne type) noexcept;

}  // namespace zuma::linux_
