#include "host/verbes/trace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "host/regard/textes.h"
#include "host/verbes/terminal.h"

namespace zuma::host {
namespace {

constexpr std::size_t kLargeurDAxe = 12;
constexpr std::size_t kColonnesParSigne = 2;
constexpr std::size_t kRangéesParSigne = 4;

// Bits of the dots of a Braille character, by column and row.
constexpr std::array<std::array<std::uint8_t, kRangéesParSigne>, kColonnesParSigne> kBits{
    {{0x01, 0x02, 0x04, 0x40}, {0x08, 0x10, 0x20, 0x80}}};

// U+2800 and the bits, in UTF-8.
std::string Signe(std::uint8_t bits) {
  return {'\xE2', static_cast<char>(0xA0 | (bits >> 6U)), static_cast<char>(0x80 | (bits & 0x3FU))};
}

class Toile {
 public:
  Toile(std::size_t largeur, std::size_t hauteur)
      : largeur_(largeur), signes_(largeur * hauteur, 0) {}

  void Allume(std::size_t x, std::size_t y) {
    std::uint8_t& signe = signes_[y / kRangéesParSigne * largeur_ + x / kColonnesParSigne];
    signe = static_cast<std::uint8_t>(signe | kBits[x % kColonnesParSigne][y % kRangéesParSigne]);
  }
  [[nodiscard]] std::string Rangée(std::size_t rang) const {
    std::string texte;
    for (std::size_t i = 0; i < largeur_; ++i) texte += Signe(signes_[rang * largeur_ + i]);
    return texte;
  }

 private:
  std::size_t largeur_;
  std::vector<std::uint8_t> signes_;
};

struct Etendue {
  double mini = INFINITY, maxi = -INFINITY;
  void Prend(double v) {
    mini = std::min(mini, v);
    maxi = std::max(maxi, v);
  }
  // Place of a value among `nombre` dots.
  [[nodiscard]] std::size_t Rang(double v, std::size_t nombre) const {
    if (!(maxi > mini)) return nombre / 2;
    return static_cast<std::size_t>(
        std::lround((v - mini) / (maxi - mini) * static_cast<double>(nombre - 1)));
  }
};

}  // namespace

std::vector<std::string> EnPoints(const std::vector<std::pair<double, double>>& courbe,
                                  std::size_t largeur, std::size_t hauteur) {
  const std::size_t colonnes = std::max<std::size_t>(largeur, kLargeurDAxe + 2) - kLargeurDAxe;
  Etendue x, y;
  for (const auto& [abscisse, ordonnée] : courbe) {
    x.Prend(abscisse);
    y.Prend(ordonnée);
  }
  Toile toile(colonnes, hauteur);
  const std::size_t points = hauteur * kRangéesParSigne;
  for (const auto& [abscisse, ordonnée] : courbe) {
    toile.Allume(x.Rang(abscisse, colonnes * kColonnesParSigne),
                 points - 1 - y.Rang(ordonnée, points));
  }
  std::vector<std::string> lignes;
  for (std::size_t rang = 0; rang < hauteur; ++rang) {
    const bool bout = !courbe.empty() && (rang == 0 || rang + 1 == hauteur);
    const std::string axe = bout ? NombreEnTexte(rang == 0 ? y.maxi : y.mini) : "";
    lignes.push_back(ADroite(axe, kLargeurDAxe - 1) + "|" + toile.Rangée(rang));
  }
  return lignes;
}

}  // namespace zuma::host
