#include "host/verbes/courbe.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zuma::host {
namespace {

constexpr double kLargeur = 520;
constexpr double kHauteur = 360;
constexpr double kGauche = 64;
constexpr double kBas = 52;
constexpr double kMarge = 28;
constexpr int kGraduations = 5;
constexpr std::size_t kPointsMaximum = 1500;

template <class... Args>
std::string Texte(const char* format, Args... valeurs) {
  char texte[256];
  std::snprintf(texte, sizeof texte, format, valeurs...);
  return texte;
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
  Cadre(const Courbe& courbe, double décalage)
      : x_(AxeDe(courbe.points, [](const auto& p) { return p.first; })),
        y_(AxeDe(courbe.points, [](const auto& p) { return p.second; })),
        décalage_(décalage) {}

  [[nodiscard]] double X(double v) const {
    return décalage_ + kGauche +
           (v - x_.mini) / (x_.maxi - x_.mini) * (kLargeur - kGauche - kMarge);
  }
  [[nodiscard]] double Y(double v) const {
    return kHauteur - kBas - (v - y_.mini) / (y_.maxi - y_.mini) * (kHauteur - kBas - kMarge);
  }

  [[nodiscard]] std::string Dessine(const Courbe& courbe) const {
    std::string svg;
    for (int i = 0; i <= x_.Graduations(); ++i) {
      const double v = x_.mini + i * x_.pas;
      svg += Ligne(X(v), Y(y_.mini), X(v), Y(y_.maxi)) +
             Texte("<text x='%.1f' y='%.1f' text-anchor='middle'>%g</text>\n", X(v),
                   kHauteur - kBas + 18, std::fabs(v) < x_.pas / 100 ? 0.0 : v);
    }
    for (int i = 0; i <= y_.Graduations(); ++i) {
      const double v = y_.mini + i * y_.pas;
      svg += Ligne(X(x_.mini), Y(v), X(x_.maxi), Y(v)) +
             Texte("<text x='%.1f' y='%.1f' text-anchor='end'>%g</text>\n", X(x_.mini) - 6,
                   Y(v) + 4, std::fabs(v) < y_.pas / 100 ? 0.0 : v);
    }
    const double milieu = (X(x_.mini) + X(x_.maxi)) / 2;
    svg += Texte("<text x='%.1f' y='18' text-anchor='middle' class='t'>", milieu) + courbe.titre +
           "</text>\n";
    svg += Texte("<text x='%.1f' y='%.1f' text-anchor='middle'>", milieu, kHauteur - 12) +
           courbe.abscisse + "</text>\n";
    svg += Texte("<text transform='translate(%.1f,%.1f) rotate(-90)' text-anchor='middle'>",
                 décalage_ + 16, kHauteur / 2) +
           courbe.ordonnée + "</text>\n";
    svg += "<polyline points='";
    const std::size_t pas = courbe.points.size() / kPointsMaximum + 1;
    for (std::size_t i = 0; i < courbe.points.size(); i += pas) {
      svg += Texte("%.1f,%.1f ", X(courbe.points[i].first), Y(courbe.points[i].second));
    }
    return svg + "'/>\n";
  }

 private:
  static std::string Ligne(double x1, double y1, double x2, double y2) {
    return Texte("<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f'/>\n", x1, y1, x2, y2);
  }
  Axe x_;
  Axe y_;
  double décalage_;
};

}  // namespace

std::string EnSvg(const std::vector<Courbe>& courbes) {
  const double largeur = kLargeur * static_cast<double>(courbes.size());
  std::string svg = Texte(
      "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %.0f %.0f' "
      "width='%.0f' height='%.0f'>\n",
      largeur, kHauteur, largeur, kHauteur);
  svg +=
      "<style>rect{fill:#fff}text{font:12px sans-serif;fill:#333}.t{font-weight:bold}"
      "line{stroke:#ddd}polyline{fill:none;stroke:#0b63b5;stroke-width:1.5}</style>\n"
      "<rect width='100%' height='100%'/>\n";
  double décalage = 0;
  for (const Courbe& courbe : courbes) {
    svg += Cadre(courbe, décalage).Dessine(courbe);
    décalage += kLargeur;
  }
  return svg + "</svg>\n";
}

}  // namespace zuma::host
