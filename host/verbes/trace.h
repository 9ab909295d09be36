#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zuma::host {

/// A curve for a terminal, in characters of dots (Braille, two by four a character), with the ends
/// of its ordinate before it. `largeur` and `hauteur` in characters, all in all.
[[nodiscard]] std::vector<std::string> EnPoints(
    const std::vector<std::pair<double, double>>& courbe, std::size_t largeur, std::size_t hauteur);

}  // namespace zuma::host
