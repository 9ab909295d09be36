#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/valeur.h"

/// Answers of the instruments that a sensor asks by itself on its own line. Pure functions on what
/// was received so far.
namespace zuma::trames_capteur {

/// Value of an answer and, where it tells one, its unit.
struct Mesure {
  std::optional<double> nombre;      ///< none when the text is no number
  std::optional<std::string> unité;  ///< none leaves the sensor's unit
};

/// The last complete answer, from its sign to its end: bit 7 of each byte is cleared, what stands
/// before the last carriage return counts, and the last "+" or "-" in it is the sign. None while
/// more is to come.
[[nodiscard]] std::optional<std::string> TrameSignée(const Octets& tampon);

/// 14 characters: 11 of number, 3 of unit. None on another length.
[[nodiscard]] std::optional<Mesure> DécodeRéservé1(std::string_view trame);

/// 10 characters: 9 of number, of which the last tells the unit: blank millimetres, "?" and
/// the double quote themselves, anything else nothing. None on another length.
[[nodiscard]] std::optional<Mesure> DécodeRéservé2(std::string_view trame);

/// Answer to "MSV?": the number less the 2 characters behind it; a text with "?" says that the
/// request was refused and holds none. Nothing while more is to come. A "?" without the line's end
/// fails with 5.
[[nodiscard]] std::optional<Mesure> DécodeScout55(const Octets& tampon);

}  // namespace zuma::trames_capteur
