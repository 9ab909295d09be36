#include "base/table_etalonnage.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <functional>
#include <iterator>
#include <limits>

#include "base/echec.h"

namespace zuma {
namespace {

std::size_t Rang(std::int16_t indice) {
  if (indice < 0 || indice > TableEtalonnage::kMaxPoints) throw Echec(Numéro::IndiceHorsPlage);
  return static_cast<std::size_t>(indice);
}

// A total order: a table that somebody filled with a value that is no number must still sort.
bool Avant(const PointDeTable& a, const PointDeTable& b) {
  return std::strong_order(a.x, b.x) < 0;
}

// A column that goes one way all along, and on to its last value by a step of its own.
bool Continue(std::span<const double> colonne) {
  const double dernière = colonne[colonne.size() - 2];
  return dernière != colonne.front() && dernière != colonne.back() &&
         (std::ranges::is_sorted(colonne) || std::ranges::is_sorted(colonne, std::greater()));
}

}  // namespace

void Interpolation::Prépare(std::span<const PointDeTable> points) {
  nombre_ = 0;
  dessus_ = jusquÀ_ = 0;  // nothing is between the two
  identité_ = points.empty();
  std::array<PointDeTable, kMaxPoints> triés{};
  const auto fin =
      std::ranges::copy(points.first(std::min(points.size(), kMaxPoints)), triés.begin()).out;
  // Points of one abscissa keep their order along the table, which may be written downwards.
  const auto enSensInverse = std::reverse_iterator(fin);
  if (std::is_sorted(enSensInverse, triés.rend(), Avant)) std::reverse(triés.begin(), fin);
  std::stable_sort(triés.begin(), fin, Avant);
  const auto ajoute = [&](const PointDeTable& a, const PointDeTable& b) {
    if (b.x != a.x) segments_[nombre_++] = {a, b};
  };
  if (points.size() == 1) ajoute({}, triés[0]);
  for (auto p = triés.begin(); fin - p > 1; ++p) ajoute(p[0], p[1]);
}

// False where `x` itself is the ordinate: without points, and for what is no number, which compared
// would come out as an end of the first segment.
bool Interpolation::Cherche(double x) const {
  if (identité_ || std::isnan(x)) return false;
  // Told, and not guessed: points that share one abscissa may mean any ordinate.
  if (nombre_ == 0) {
    throw Echec(Numéro::DivisionParZéro,
                DescriptionDEchec(Numéro::DivisionParZéro) +
                    " : la table d'étalonnage n'a pas deux abscisses distinctes");
  }
  const auto* segment = segments_.data();
  const auto* const dernier = segment + nombre_ - 1;
  while (segment != dernier && x > segment->fin.x) ++segment;
  constexpr double kSansFin = std::numeric_limits<double>::infinity();
  segment_ = *segment;
  dessus_ = segment == segments_.data() ? -kSansFin : segment[-1].fin.x;
  jusquÀ_ = segment == dernier ? kSansFin : segment->fin.x;
  const double a = segment_.début.y;
  const double b = segment_.fin.y;
  changeDeSigne_ = (a <= 0 && b >= 0) || (a >= 0 && b <= 0);
  monte_ = b > a;
  return true;
}

double TableEtalonnage::PointX(std::int16_t indice) const {
  return unités_[Rang(indice)];
}
double TableEtalonnage::PointY(std::int16_t indice) const {
  return points_[Rang(indice)];
}
void TableEtalonnage::PointX(std::int16_t indice, double unités) {
  unités_[Rang(indice)] = unités;
  Prépare();
}
void TableEtalonnage::PointY(std::int16_t indice, double points) {
  points_[Rang(indice)] = points;
  Prépare();
}

std::size_t TableEtalonnage::RangéesUtiles(const Colonne& unités, const Colonne& points) {
  std::size_t dernier = kMaxPoints;
  while (dernier > 0 && unités[dernier] == 0 && points[dernier] == 0) --dernier;
  if (dernier < 2 || dernier == kMaxPoints) return dernier;
  const auto avecLeZéro = [&](const auto& colonne) {
    return std::span<const double>(colonne).subspan(1, dernier + 1);
  };
  return Continue(avecLeZéro(unités)) && Continue(avecLeZéro(points)) ? dernier + 1 : dernier;
}

void TableEtalonnage::Prépare() {
  const std::size_t dernier = RangéesUtiles(unités_, points_);
  std::array<PointDeTable, kMaxPoints> versUnités{};
  std::array<PointDeTable, kMaxPoints> versPoints{};
  for (std::size_t i = 0; i < dernier; ++i) {
    versUnités[i] = {points_[i + 1], unités_[i + 1]};
    versPoints[i] = {unités_[i + 1], points_[i + 1]};
  }
  versUnités_.Prépare(std::span(versUnités).first(dernier));
  versPoints_.Prépare(std::span(versPoints).first(dernier));
}

}  // namespace zuma
