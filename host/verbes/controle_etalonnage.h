#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/table_etalonnage.h"
#include "host/problemes.h"

namespace zuma::host {

/// What a calibration table is used for.
struct UsageDeTable {
  bool inverse = false;  ///< units to points too: a command, or a sensor that is zeroed
  bool zéro = false;     ///< the points of 0 units must lie inside
};

/// A row of a calibration table that does not do what a table is for.
struct DéfautDeTable {
  std::size_t rangée = 1;  ///< from 1
  bool points = false;     ///< its points are wrong; else its units
  Gravité gravité = Gravité::Erreur;
  std::string_view texte;
  std::string trouvé;
  std::string attendu;
};

/// Looks for: rows after an empty one, rows there twice, two units for one count, one count alone,
/// units that go up and down so that no inverse exists, no zero where one is needed.
[[nodiscard]] std::vector<DéfautDeTable> DéfautsDeLaTable(const TableEtalonnage::Colonne& unités,
                                                          const TableEtalonnage::Colonne& points,
                                                          const UsageDeTable& usage);

}  // namespace zuma::host
