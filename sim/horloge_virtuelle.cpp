#include "sim/horloge_virtuelle.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace zuma::sim {

// In the order of their instants, each at its own; one that was missed comes now.
void HorlogeVirtuelle::FaitArriver(double cible) {
  while (!suivies_.empty()) {
    Echéance& suivante = **std::ranges::min_element(suivies_, {}, &Echéance::Prochaine);
    prochaine_ = suivante.Prochaine();
    if (prochaine_ > cible) return;
    heure_ = std::max(heure_, prochaine_);
    suivante.Arrive();
  }
  prochaine_ = Echéance::kJamais;
}

std::string HorlogeVirtuelle::TexteHeure() const {
  constexpr double kJour = 24 * 3600;
  const double heure = std::fmod(départ_ + heure_ / 1e6, kJour);
  const auto secondes = static_cast<int>(heure < 0 ? heure + kJour : heure);
  std::array<char, 16> texte{};
  std::snprintf(texte.data(), texte.size(), "%02d:%02d:%02d", secondes / 3600, secondes / 60 % 60,
                secondes % 60);
  return texte.data();
}

}  // namespace zuma::sim
