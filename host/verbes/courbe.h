#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zuma::host {

/// One curve with its axes.
struct Courbe {
  std::string titre;
  std::string abscisse;  ///< name and unit
  std::string ordonnée;
  std::vector<std::pair<double, double>> points;
};

/// The curves side by side as an SVG picture.
[[nodiscard]] std::string EnSvg(const std::vector<Courbe>& courbes);

}  // namespace zuma::host
