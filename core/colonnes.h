#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base_de_donnees.h"

/// Reads of the columns that a row must have. A failure names the column: a missing one is 3265,
/// Null 94, text that is no number 94 or 13.
namespace zuma::colonnes {

[[nodiscard]] std::string Texte(const Recordset& ligne, std::string_view colonne);
/// Numbers are also read from texts, with comma or point.
[[nodiscard]] double Nombre(const Recordset& ligne, std::string_view colonne);

/// The same of a value already found in column `colonne`.
[[nodiscard]] std::string Texte(const Valeur& valeur, std::string_view colonne);
[[nodiscard]] double Nombre(const Valeur& valeur, std::string_view colonne);
[[nodiscard]] std::int32_t Entier32(const Valeur& valeur, std::string_view colonne);

}  // namespace zuma::colonnes
