#include "host/desktop/historique.h"

#include <algorithm>
#include <cmath>

namespace zuma::host {

std::int64_t Historique::RangDe(double secondes) const {
  return static_cast<std::int64_t>(std::floor(std::max(secondes, 0.0) / largeur_));
}

void Historique::Note(double secondes, std::optional<double> valeur) {
  const std::int64_t rang = RangDe(secondes);
  Case& c = cases_[Place(rang)];
  if (c.rang != rang) c = Case{.rang = rang};
  if (!valeur) {
    (c.lue ? c.trouAprès : c.trouAvant) = true;
  } else if (!c.lue) {
    c.lue = true;
    c.mini = c.maxi = *valeur;
  } else if (*valeur < c.mini) {
    c.mini = *valeur;
    c.monte = false;
  } else if (*valeur > c.maxi) {
    c.maxi = *valeur;
    c.monte = true;
  }
}

std::vector<QList<QPointF>> Historique::Segments(double maintenant) const {
  std::vector<QList<QPointF>> segments;
  const std::int64_t dernier = RangDe(maintenant);
  const auto silence = static_cast<std::int64_t>(std::ceil(kSilence / largeur_));
  std::int64_t précédent = -1;
  bool coupé = true;
  for (std::int64_t rang = std::max<std::int64_t>(dernier - kCases + 1, 0); rang <= dernier;
       ++rang) {
    const Case& c = cases_[Place(rang)];
    if (c.rang != rang) continue;
    if (c.lue) {
      if (coupé || c.trouAvant || rang - précédent > silence) segments.emplace_back();
      const double t = static_cast<double>(rang - dernier) * largeur_;
      segments.back().append({t, c.monte ? c.mini : c.maxi});
      if (c.mini != c.maxi) segments.back().append({t, c.monte ? c.maxi : c.mini});
      précédent = rang;
      coupé = c.trouAprès;
    } else {
      coupé = true;
    }
  }
  return segments;
}

}  // namespace zuma::host
