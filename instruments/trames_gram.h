#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/valeur.h"

/// Records of the Gram balance: 8 characters of number, sign first, 2 of unit, then CR LF. Pure
/// functions on the bytes, nothing here fails.
namespace zuma::trames_gram {

/// Terminator of a record.
inline constexpr std::string_view kFin = "\r\n";
/// Characters of the number.
inline constexpr std::size_t kLongueurNombre = 8;
/// Characters of the unit.
inline constexpr std::size_t kLongueurUnité = 2;
/// Characters of a record, the terminator apart.
inline constexpr std::size_t kLongueurEnregistrement = kLongueurNombre + kLongueurUnité;

/// True when `tampon` begins with a record that came to its end, without terminator: what came
/// before it is gone, the beginning of the next one stands behind it. The last terminator counts; a
/// text of 12 characters or less, one whole record, is not looked at yet. A text that never ends is
/// kept to its last part.
[[nodiscard]] bool ExtraitEnregistrement(Octets& tampon);

/// The number of a record, with or without blanks between its sign and its digits; none when it
/// cannot be read.
[[nodiscard]] std::optional<double> Nombre(std::string_view enregistrement) noexcept;

/// True when a terminator follows the first "+", or without any the first "-", by exactly one
/// record. Nothing else is looked at.
[[nodiscard]] bool ContientUnEnregistrement(std::string_view reçus) noexcept;

}  // namespace zuma::trames_gram
