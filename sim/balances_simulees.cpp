#include "sim/balances_simulees.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace zuma::sim {

void BalanceSimulée::Réveil(LigneSérie& ligne) {
  ligne.Emet(trameForcée.empty() ? Trame() : trameForcée, 0);
  ligne.Réveille(période);
}

Octets BalanceLRPC31Simulée::Trame() const {
  auto reste = std::lround(std::fabs(poids) * 1000);
  Octets trame(1, static_cast<char>(poids < 0 ? 0xA8 : 0xA4));
  for (unsigned place = 0; place < 5; ++place) {
    trame += static_cast<char>(place << 5U | static_cast<unsigned>(reste % 10));
    reste /= 10;
  }
  std::ranges::rotate(trame, trame.begin() + static_cast<std::ptrdiff_t>(début % trame.size()));
  return trame;
}

Octets IndicateurDEXALSimulé::Trame() const {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "\x02S%c%06.2f", poids < 0 ? '-' : '+',
                std::fabs(poids));
  return Octets(texte.data()).substr(0, 9);
}

Octets BalanceJADEVERSimulée::Trame() const {
  std::array<char, 48> texte{};
  std::snprintf(texte.data(), texte.size(), "S/N:0001 N.W.:%9.3f%s\r\n", poids, unité.c_str());
  return texte.data();
}

}  // namespace zuma::sim
