#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/base_de_donnees.h"

namespace zuma::linux_ {

/// One row to put into a new file. Columns left out take their default.
struct LigneDeBase {
  std::string table;          ///< table that it goes to
  std::vector<Champ> champs;  ///< its values by column
};

/// Creates a configuration database with every table of the system and these rows. An existing
/// file is never touched: it fails with 58. On any other failure (a row that a table does not
/// take, a full disk) no file is left behind.
void CréeBase(const std::string& chemin, std::span<const LigneDeBase> lignes);

}  // namespace zuma::linux_
