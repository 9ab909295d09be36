#include "host/courbe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "platform/linux/texte_ligne.h"

namespace zuma::host {
namespace {

constexpr double kLargeur = 520;
constexpr double kHauteur = 360;
constexpr double kGauche = 64;
constexpr double kBas = 52;
constexpr double kMarge = 28;
constexpr double kInterligne = 18;
constexpr int kGraduations = 5;
constexpr std::size_t kPointsMaximum = 4000;

template <class... Args>
std::string Texte(const char* format, Args... valeurs) {
  char texte[256];
  std::snprintf(texte, sizeof texte, format, valeurs...);
  return texte;
}

// A text as SVG holds it.
std::string Echappe(const std::string& texte) {
  std::string sûr;
  for (const char c : linux_::UneSeuleLigne(texte)) {
    constexpr std::array<std::pair<char, std::string_view>, 5> kSignes{
        {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\'', "&#39;"}, {'"', "&quot;"}}};
    const auto* signe = std::ranges::find(kSignes, c, &std::pair<char, std::string_view>::first);
    if (signe != kSignes.end()) {
      sûr += signe->second;
    } else {
      sûr += c;
    }
  }
  return sûr;
}

// A round step that divides the span into about five.
double Pas(double étendue) {
  if (!(étendue > 0)) return 1;
  const double brut = étendue / kGraduations;
  const double puissance = std::pow(10, std::floor(std::log10(brut)));
  for (const double m : {1.0, 2.0, 5.0}) {
    if (m * puissance >= brut) return m * puissance;
  }
  return 10 * puissance;
}

struct Axe {
  double mini = 0;
  double maxi = 1;
  double pas = 1;
  [[nodiscard]] int Graduations() const {
    return static_cast<int>(std::lround((maxi - mini) / pas));
  }
};

template <class Lit>
Axe AxeDe(const std::vector<std::pair<double, double>>& points, Lit&& lit) {
  Axe axe{0, 0, 1};
  for (const auto& p : points) {
    axe.mini = std::min(axe.mini, lit(p));
    axe.maxi = std::max(axe.maxi, lit(p));
  }
  axe.pas = Pas(axe.maxi - axe.mini);
  axe.mini = std::floor(axe.mini / axe.pas) * axe.pas;
  axe.maxi = std::max(axe.mini + axe.pas, std::ceil(axe.maxi / axe.pas) * axe.pas);
  return axe;
}

class Cadre {
 public:
  Cadre(const Courbe& courbe, double décalage, double hauteur)
      : x_(AxeDe(courbe.points, [](const auto& p) { return p.first; })),
        y_(AxeDe(courbe.points, [](const auto& p) { return p.second; })),
        décalage_(décalage),
        haut_(hauteur) {}

  [[nodiscard]] double X(double v) const {
    return décalage_ + kGauche +
           (v - x_.mini) / (x_.maxi - x_.mini) * (kLargeur - kGauche - kMarge);
  }
  [[nodiscard]] double Y(double v) const {
    return haut_ + kHauteur - kBas -
           (v - y_.mini) / (y_.maxi - y_.mini) * (kHauteur - kBas - kMarge);
  }

  [[nodiscard]] std::string Dessine(const Courbe& courbe) const {
    std::string svg;
    for (int i = 0; i <= x_.Graduations(); ++i) {
      const double v = x_.mini + i * x_.pas;
      svg += Ligne(X(v), Y(y_.mini), X(v), Y(y_.maxi)) +
             Texte("<text x='%.1f' y='%.1f' text-anchor='middle'>%g</text>\n", X(v),
                   haut_ + kHauteur - kBas + 18, std::fabs(v) < x_.pas / 100 ? 0.0 : v);
    }
    for (int i = 0; i <= y_.Graduations(); ++i) {
      const double v = y_.mini + i * y_.pas;
      svg += Ligne(X(x_.mini), Y(v), X(x_.maxi), Y(v)) +
             Texte("<text x='%.1f' y='%.1f' text-anchor='end'>%g</text>\n", X(x_.mini) - 6,
                   Y(v) + 4, std::fabs(v) < y_.pas / 100 ? 0.0 : v);
    }
    const double milieu = (X(x_.mini) + X(x_.maxi)) / 2;
    svg += Texte("<text x='%.1f' y='%.1f' text-anchor='middle' class='t'>", milieu, haut_ + 18) +
           Echappe(courbe.titre) + "</text>\n";
    svg += Texte("<text x='%.1f' y='%.1f' text-anchor='middle'>", milieu, haut_ + kHauteur - 12) +
           Echappe(courbe.abscisse) + "</text>\n";
    svg += Texte("<text transform='translate(%.1f,%.1f) rotate(-90)' text-anchor='middle'>",
                 décalage_ + 16, haut_ + kHauteur / 2) +
           Echappe(courbe.ordonnée) + "</text>\n";
    svg += DessineLesRepères(courbe) + "<polyline points='";
    const std::size_t pas = courbe.points.size() / kPointsMaximum + 1;
    for (std::size_t i = 0; i < courbe.points.size(); i += pas) {
      svg += Texte("%.1f,%.1f ", X(courbe.points[i].first), Y(courbe.points[i].second));
    }
    return svg + "'/>\n";
  }

 private:
  [[nodiscard]] std::string DessineLesRepères(const Courbe& courbe) const {
    std::string svg;
    const auto ligne = [&](double x1, double y1, double x2, double y2) {
      svg += Texte("<line class='m' x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f'/>\n", x1, y1, x2, y2);
    };
    if (courbe.moment) ligne(X(*courbe.moment), Y(y_.mini), X(*courbe.moment), Y(y_.maxi));
    for (const double limite : courbe.limites) {
      if (limite < y_.mini || limite > y_.maxi) continue;
      ligne(X(x_.mini), Y(limite), X(x_.maxi), Y(limite));
    }
    return svg;
  }
  static std::string Ligne(double x1, double y1, double x2, double y2) {
    return Texte("<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f'/>\n", x1, y1, x2, y2);
  }
  Axe x_;
  Axe y_;
  double décalage_;
  double haut_;
};

}  // namespace

std::string EnSvg(const std::vector<Courbe>& courbes, std::size_t colonnes,
                  const std::vector<LigneDePage>& texte) {
  colonnes = std::max<std::size_t>(colonnes, 1);
  const std::size_t rangées = (courbes.size() + colonnes - 1) / colonnes;
  const double haut = texte.empty() ? 0 : kMarge + kInterligne * static_cast<double>(texte.size());
  const double largeur = kLargeur * static_cast<double>(colonnes);
  const double hauteur = haut + kHauteur * static_cast<double>(rangées);
  std::string svg = Texte(
      "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %.0f %.0f' "
      "width='%.0f' height='%.0f'>\n",
      largeur, hauteur, largeur, hauteur);
  svg +=
      "<style>rect{fill:#fff}text{font:12px sans-serif;fill:#333}.t{font-weight:bold}"
      "line{stroke:#ddd}.m{stroke:#c0392b;stroke-dasharray:4 3}"
      "polyline{fill:none;stroke:#0b63b5;stroke-width:1.5}</style>\n"
      "<rect width='100%' height='100%'/>\n";
  double y = kMarge;
  for (const LigneDePage& ligne : texte) {
    svg += Texte("<text x='24' y='%.1f'%s>", y, ligne.titre ? " class='t'" : "") +
           Echappe(ligne.texte) + "</text>\n";
    y += kInterligne;
  }
  for (std::size_t i = 0; i < courbes.size(); ++i) {
    const Cadre cadre(courbes[i], kLargeur * static_cast<double>(i % colonnes),
                      haut + kHauteur * static_cast<double>(i / colonnes));
    svg += cadre.Dessine(courbes[i]);
  }
  return svg + "</svg>\n";
}

}  // namespace zuma::host
