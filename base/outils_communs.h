#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/valeur.h"

/// Small conversions shared by all classes.
namespace zuma::OutilsCommuns {

/// True when bit `bit` (0 to 31) of `mot` is set.
[[nodiscard]] constexpr bool BitDeMot(std::int32_t mot, int bit) noexcept {
  return ((static_cast<std::uint32_t>(mot) >> bit) & 1U) != 0;
}

/// A field's value made safe for a number: text is trimmed and read with comma or point; Null,
/// empty and unreadable text give Null. Numbers and booleans pass.
[[nodiscard]] Valeur LitChampSûr(const Valeur& champ);

/// Value of a hexadecimal text of 1 to 8 digits, blanks around it allowed. Null fails with 94,
/// anything else that is not hexadecimal with 13.
[[nodiscard]] std::int32_t HexaVersLong(const Valeur& texte,
                                        std::source_location où = std::source_location::current());

/// A number in readable form, with the decimal separator of the settings.
[[nodiscard]] std::string FormateNombre(const Valeur& nombre, char séparateur = ',');

}  // namespace zuma::OutilsCommuns
