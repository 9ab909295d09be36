#pragma once

#include "base/table_etalonnage.h"
#include "platform/base_de_donnees.h"

namespace zuma::colonnes {

/// The calibration table of a row: "Point n - Unité" and "Point n - Point", n from 1 to 20, which
/// the row must have. The values in front of one that fails are taken.
void LitTable(const Recordset& ligne, TableEtalonnage& table);

}  // namespace zuma::colonnes
