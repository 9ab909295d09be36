#include "platform/linux/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zuma::linux_ {
namespace {

// First byte, the range allowed for the second, and the length of the sequence.
struct Séquence {
  std::uint8_t premier, dernier, secondMin, secondMax;
  std::size_t longueur;
};

constexpr std::array<Séquence, 9> kSéquences{{
    {0x00, 0x7F, 0x00, 0x00, 1},
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
}};

bool Entre(char c, std::uint8_t min, std::uint8_t max) {
  const auto octet = static_cast<std::uint8_t>(c);
  return octet >= min && octet <= max;
}

}  // namespace

std::size_t LongueurUTF8(std::string_view texte) noexcept {
  if (texte.empty()) return 0;
  if (static_cast<unsigned char>(texte[0]) < 0x80) return 1;
  const auto* forme = std::ranges::find_if(
      kSéquences, [&](const Séquence& s) { return Entre(texte[0], s.premier, s.dernier); });
  if (forme == kSéquences.end() || texte.size() < forme->longueur) return 0;
  for (std::size_t i = 1; i < forme->longueur; ++i) {
    const bool second = i == 1;
    if (!Entre(texte[i], second ? forme->secondMin : 0x80, second ? forme->secondMax : 0xBF)) {
      return 0;
    }
  }
  return forme->longueur;
}

bool EstUTF8(std::string_view texte) noexcept {
  while (!texte.empty()) {
    const std::size_t longueur = LongueurUTF8(texte);
    if (longueur == 0) return false;
    texte.remove_prefix(longueur);
  }
  return true;
}

}  // namespace zuma::linux_
