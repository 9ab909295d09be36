#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/base_de_donnees.h"

namespace zuma {

/// Column of a calibration row that holds the sum of all the others. A table may lack it.
inline constexpr std::string_view kColonneSomme = "Somme de contrôle";

/// Sum of a row, 16 hexadecimal digits, from the names and values of its fields in their order.
/// Null fields take no part, nor the sum itself: a column that is added later changes nothing,
/// unless a DEFAULT fills it in the rows that are there.
[[nodiscard]] std::string SommeDeContrôle(std::span<const Champ> champs);

/// False when the row holds a sum and it is not its own: somebody else changed the row, or the file
/// is damaged. A row without a sum is not protected.
[[nodiscard]] bool SommeTient(const Recordset& ligne);

/// What is told of an object (`sujet` and its name) whose row does not hold its sum.
[[nodiscard]] std::string LigneChangée(std::string_view sujet, std::string_view nom);

}  // namespace zuma
