#pragma once

#include <string>
#include <string_view>

namespace zuma::linux_ {

/// `texte` on one line: control characters become spaces. Names come from a configuration that is
/// not trusted: none may forge a line of a file or send sequences to a terminal.
[[nodiscard]] inline std::string UneSeuleLigne(std::string_view texte) {
  constexpr char kSuppression = 0x7F;
  std::string ligne(texte);
  for (char& c : ligne) {
    if ((c >= 0 && c < ' ') || c == kSuppression) c = ' ';
  }
  return ligne;
}

}  // namespace zuma::linux_
