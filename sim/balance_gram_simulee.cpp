#include "sim/balance_gram_simulee.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace zuma::sim {
namespace {

constexpr double kPortée = 9999.99;  // what seven characters show

}  // namespace

Octets BalanceGramSimulée::Trame() const {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%c%7.2f%2.2s\r\n", poids < 0 ? '-' : '+',
                std::min(std::fabs(poids), kPortée), unité.c_str());
  return texte.data();
}

}  // namespace zuma::sim
