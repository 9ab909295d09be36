#pragma once

#include <string>
#include <string_view>

namespace zuma::linux_ {

/// `texte` on one line, as text and nothing else: controls (also those of two bytes), separators of
/// lines and marks that turn the direction of writing become spaces, bytes that are no UTF-8 the
/// replacement character. Names come from a configuration that is not trusted: none may forge a
/// line of a file or send sequences to a terminal.
[[nodiscard]] std::string UneSeuleLigne(std::string_view texte);

/// The same of several lines: line feeds stay.
[[nodiscard]] std::string SansSéquence(std::string_view texte);

}  // namespace zuma::linux_
