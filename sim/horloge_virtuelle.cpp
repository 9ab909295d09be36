#include "sim/horloge_virtuelle.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace zuma::sim {

std::string HorlogeVirtuelle::TexteHeure() const {
  constexpr double kJour = 24 * 3600;
  const auto secondes = static_cast<int>(std::fmod(départ_ + heure_ / 1e6, kJour));
  std::array<char, 16> texte{};
  std::snprintf(texte.data(), texte.size(), "%02d:%02d:%02d", secondes / 3600, secondes / 60 % 60,
                secondes % 60);
  return texte.data();
}

}  // namespace zuma::sim
