#include "host/verbes/controle_etalonnage.h"

#include <algorithm>
#include <cmath>

#include "base/echec.h"
#include "base/valeur.h"

namespace zuma::host {
namespace {

struct Rangée {
  std::size_t numéro = 0;  // from 1
  double unités = 0;
  double points = 0;
  [[nodiscard]] bool Vide() const { return unités == 0 && points == 0; }
};
using Rangées = std::vector<Rangée>;
using Défauts = std::vector<DéfautDeTable>;

Rangées LesRangées(const TableEtalonnage::Colonne& unités, const TableEtalonnage::Colonne& points) {
  Rangées rangées;
  const std::size_t utiles = TableEtalonnage::RangéesUtiles(unités, points);
  for (std::size_t i = 1; i <= utiles; ++i) rangées.push_back({i, unités[i], points[i]});
  return rangées;
}

std::string Texte(const Rangée& rangée) {
  return TexteDeNombre(rangée.unités) + " for " + TexteDeNombre(rangée.points) + " points in row " +
         std::to_string(rangée.numéro);
}

// The rows but that one give something else at 0 points.
bool ChangeLaTable(const Rangées& rangées, std::size_t sans) {
  constexpr double kArrondi = 1e-9;  // of the largest value
  TableEtalonnage autres;
  std::int16_t place = 0;
  double échelle = 0;
  for (std::size_t i = 0; i < rangées.size(); ++i) {
    if (i == sans) continue;
    ++place;
    autres.PointX(place, rangées[i].unités);
    autres.PointY(place, rangées[i].points);
    échelle = std::max(échelle, std::abs(rangées[i].unités));
  }
  try {
    return std::abs(autres.VersUnités(0)) > kArrondi * échelle;
  } catch (const Echec&) {
    return true;
  }
}

// (0, 0) is a row where it continues the table, and may be one that was left out anywhere else.
bool EstOubliée(const Rangées& rangées, std::size_t i) {
  if (!rangées[i].Vide() || i + 1 >= rangées.size()) return false;
  const Rangée& suivante = rangées[i + 1];
  if (i == 0) return suivante.Vide();
  const Rangée& avant = rangées[i - 1];
  return avant.unités * suivante.unités >= 0 || avant.points * suivante.points >= 0;
}

void ExigeQueRienNeSuiveUneVide(const Rangées& rangées, Défauts& défauts) {
  for (std::size_t i = 0; i < rangées.size(); ++i) {
    if (!EstOubliée(rangées, i) || !ChangeLaTable(rangées, i)) continue;
    défauts.push_back({.rangée = rangées[i].numéro,
                       .gravité = Gravité::Avertissement,
                       .texte = "an empty row has rows behind it, and counts as 0 for 0 points",
                       .trouvé = Texte(rangées[i]),
                       .attendu = "the rows in use first, the empty ones behind"});
    return;
  }
}

bool UneSeuleAbscisse(const Rangées& rangées, Défauts& défauts) {
  const auto autre = [&](const Rangée& r) { return r.points != rangées.front().points; };
  const bool seule =
      rangées.size() == 1 ? rangées.front().points == 0 : std::ranges::none_of(rangées, autre);
  if (!seule) return false;
  défauts.push_back({.rangée = rangées.front().numéro,
                     .points = true,
                     .texte = "all rows have the same points: the table gives no value",
                     .trouvé = TexteDeNombre(rangées.front().points),
                     .attendu = "rows of different points"});
  return true;
}

// True when no points are there twice. `rangées`: by points.
bool SansDoublon(const Rangées& rangées, Défauts& défauts) {
  const auto nombre = défauts.size();
  for (std::size_t i = 1; i < rangées.size(); ++i) {
    const Rangée& a = rangées[i - 1];
    const Rangée& b = rangées[i];
    if (a.points != b.points) continue;
    const bool même = a.unités == b.unités;
    défauts.push_back({.rangée = b.numéro,
                       .points = true,
                       .gravité = même ? Gravité::Avertissement : Gravité::Erreur,
                       .texte = même ? "the row is there twice" : "two values for the same points",
                       .trouvé = Texte(b),
                       .attendu = "other points than " + Texte(a)});
  }
  return nombre == défauts.size();
}

// `rangées`: by points, each once.
void ExigeUnInverse(const Rangées& rangées, const UsageDeTable& usage, Défauts& défauts) {
  for (std::size_t i = 1; i < rangées.size(); ++i) {
    const double pas = rangées[i].unités - rangées[i - 1].unités;
    const double premier = rangées[1].unités - rangées[0].unités;
    if (pas * premier > 0) continue;
    défauts.push_back({.rangée = rangées[i].numéro,
                       .gravité = usage.inverse ? Gravité::Erreur : Gravité::Avertissement,
                       .texte = "the table has no inverse: its units stand still or turn back",
                       .trouvé = Texte(rangées[i]),
                       .attendu = "units that go on from " + Texte(rangées[i - 1])});
    return;
  }
}

void ExigeUnZéro(const Rangées& rangées, Défauts& défauts) {
  const auto [bas, haut] = std::ranges::minmax_element(rangées, {}, &Rangée::unités);
  if (rangées.size() == 1 || (bas->unités <= 0 && haut->unités >= 0)) return;
  const Rangée& proche = bas->unités > 0 ? *bas : *haut;
  défauts.push_back({.rangée = proche.numéro,
                     .gravité = Gravité::Avertissement,
                     .texte = "zeroing is allowed, and the table does not reach 0",
                     .trouvé = Texte(proche),
                     .attendu = "a row of 0, or rows on both sides of it"});
}

}  // namespace

std::vector<DéfautDeTable> DéfautsDeLaTable(const TableEtalonnage::Colonne& unités,
                                            const TableEtalonnage::Colonne& points,
                                            const UsageDeTable& usage) {
  Défauts défauts;
  Rangées rangées = LesRangées(unités, points);
  if (rangées.empty()) return défauts;
  ExigeQueRienNeSuiveUneVide(rangées, défauts);
  if (usage.zéro) ExigeUnZéro(rangées, défauts);
  if (UneSeuleAbscisse(rangées, défauts)) return défauts;
  std::ranges::stable_sort(rangées, {}, &Rangée::points);
  if (SansDoublon(rangées, défauts)) ExigeUnInverse(rangées, usage, défauts);
  return défauts;
}

}  // namespace zuma::host
