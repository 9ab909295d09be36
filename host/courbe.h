#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zuma::host {

/// One curve with its axes.
struct Courbe {
  std::string titre;                              ///< above the curve
  std::string abscisse;                           ///< name and unit
  std::string ordonnée;                           ///< name and unit
  std::vector<std::pair<double, double>> points;  ///< in the order in which they are joined
  std::optional<double> moment{};                 ///< marked by a line across
  std::vector<double> limites{};  ///< of the ordinate, drawn where they come near the curve
};

/// A line of text above the curves.
struct LigneDePage {
  std::string texte;   ///< words of the line
  bool titre = false;  ///< set larger, as a title
};

/// The curves as an SVG picture, `colonnes` side by side, below the lines of text. Texts are those
/// of a configuration: none of them becomes markup.
[[nodiscard]] std::string EnSvg(const std::vector<Courbe>& courbes, std::size_t colonnes,
                                const std::vector<LigneDePage>& texte = {});
/// All side by side.
[[nodiscard]] inline std::string EnSvg(const std::vector<Courbe>& courbes) {
  return EnSvg(courbes, courbes.size());
}

}  // namespace zuma::host
