#pragma once

#include <cstdint>
#include <source_location>
#include <string_view>

#include <sqlite3.h>

#include "base/valeur.h"

namespace zuma::linux_ {

/// What a column holds, from its declared type.
enum class TypeColonne : std::uint8_t { Quelconque, Texte, Entier, Réel, Booléen };

/// The type that a declaration means, other programs' spellings included; none is `Quelconque`.
[[nodiscard]] TypeColonne TypeDéclaré(std::string_view déclaration) noexcept;

/// The value of a column of the current row. A boolean column gives a boolean, an integer beyond
/// 32 bits a double; bytes that are no text (a host's pictures) give Null.
[[nodiscard]] Valeur LitColonne(sqlite3_stmt* instruction, int rang, TypeColonne type);

/// `valeur` as a column of that type keeps it: a text that is a number, with comma or point,
/// becomes that number in a numeric column, a number the text of it in a text column; Null stays
/// Null. Fails with 13 on a text that is no number, 6 on what the column cannot hold (also on
/// infinities and NaN, which a file would give back as something else), naming `colonne`.
[[nodiscard]] Valeur PourColonne(const Valeur& valeur, TypeColonne type, std::string_view colonne,
                                 std::source_location où = std::source_location::current());

}  // namespace zuma::linux_
