#pragma once

#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zuma {

/// Bytes of a line, one `char` a byte; never text to show.
using Octets = std::string;

/// The database's Null.
struct Nul {
  /// Two Nulls are equal.
  friend bool operator==(Nul, Nul) = default;
};

/// A value of a database field, a parameter or an error table. Text is UTF-8.
using Valeur = std::variant<Nul, bool, std::int32_t, double, std::string>;

/// Boolean true wherever a boolean meets a number.
inline constexpr int kVrai = -1;

/// True on Null alone.
[[nodiscard]] inline bool EstNul(const Valeur& v) noexcept {
  return std::holds_alternative<Nul>(v);
}

/// True on empty text and on nothing else; Null is not empty.
[[nodiscard]] bool EstTexteVide(const Valeur& v) noexcept;

/// Null or empty text: the test of the columns that are skipped "when null or empty".
[[nodiscard]] bool EstNulOuVide(const Valeur& v) noexcept;

///@{
/// Narrowing conversions. They round half to even and fail with 6 out of range, 13 on text that
/// is no number, 94 on Null, at the caller's line.
[[nodiscard]] std::int16_t VersEntier16(double v,
                                        std::source_location où = std::source_location::current());
[[nodiscard]] std::int16_t VersEntier16(const Valeur& v,
                                        std::source_location où = std::source_location::current());
[[nodiscard]] std::int32_t VersEntier32(double v,
                                        std::source_location où = std::source_location::current());
[[nodiscard]] std::int32_t VersEntier32(const Valeur& v,
                                        std::source_location où = std::source_location::current());
[[nodiscard]] double VersDouble(const Valeur& v,
                                std::source_location où = std::source_location::current());
///@}

/// Boolean of a value: any number but 0 is true; text "True"/"Vrai", "False"/"Faux" or a number.
[[nodiscard]] bool VersBooléen(const Valeur& v,
                               std::source_location où = std::source_location::current());

/// Text of a value: numbers as shown to people (see `TexteDeNombre`), booleans "Vrai"/"Faux";
/// Null fails with 94.
[[nodiscard]] std::string VersTexte(const Valeur& v,
                                    std::source_location où = std::source_location::current());

/// Division that fails with 11 on a zero divisor.
[[nodiscard]] double Divise(double dividende, double diviseur,
                            std::source_location où = std::source_location::current());

/// Number in a text with optional blanks around it, decimal comma or point, optional exponent.
/// False when the text is anything else.
[[nodiscard]] bool LitNombre(std::string_view texte, double& nombre) noexcept;

/// The same number as instruments send it: there may be blanks between its sign and its digits.
[[nodiscard]] bool LitNombreSigné(std::string_view texte, double& nombre) noexcept;

/// A number as shown to people: up to 15 significant digits, `séparateur` between units and
/// decimals, no thousands separator.
[[nodiscard]] std::string TexteDeNombre(double nombre, char séparateur = ',');

/// The parts of `texte` between separators, as they stand; they live as long as it does. A text
/// without separator is one part.
[[nodiscard]] std::vector<std::string_view> Découpe(std::string_view texte, char séparateur);

/// `texte` without the blanks at both ends.
[[nodiscard]] std::string_view SansBlancs(std::string_view texte) noexcept;

}  // namespace zuma
