#include "commands/dither.h"

#include <algorithm>

namespace zuma {
namespace {

// A toggle is planned one period ahead at most: the rest is for the rounding of the sums.
constexpr double kPériodesDAvance = 2;

double DemiPériode(double fréquence) noexcept {
  return 1 / fréquence / 2;
}

}  // namespace

void Dither::Recale(double t) noexcept {
  retard_ = 0;
  prochaine_ = t;
  dernière_ = t;
  côté_ = Côté::Aucun;
}

// What a late host left behind, or a much slower wave, must not make an output move a minute later.
bool Dither::EstDû(double t, double fréquence) const noexcept {
  return t > prochaine_ || prochaine_ - t > kPériodesDAvance / fréquence;
}

// The lateness adds to the next half period, and is taken off the lateness of the one after: the
// sign is that of machines in service. A host that was away for long must not hold the wave back
// for as long again.
void Dither::PlanifieAvecRetard(double t, double fréquence) noexcept {
  const double demi = DemiPériode(fréquence);
  retard_ = std::min(t - dernière_ - retard_ - demi, demi);
  dernière_ = t;
  prochaine_ = demi + retard_ + t;
}

void Dither::Planifie(double t, double fréquence) noexcept {
  prochaine_ = DemiPériode(fréquence) + t;
}

void Dither::Bascule() noexcept {
  côté_ = hautEnsuite_ ? Côté::Haut : Côté::Bas;
  hautEnsuite_ = !hautEnsuite_;
}

double Dither::Valeur(double base, double amplitude) const noexcept {
  if (côté_ == Côté::Aucun) return base;
  return côté_ == Côté::Haut ? base + amplitude / 2 : base - amplitude / 2;
}

double AmplitudeUtilisable(double base, double amplitude, double mini, double maxi) noexcept {
  if (amplitude / 2 > maxi - base) return 2 * (maxi - base);
  if (amplitude / 2 > base - mini) return 2 * (base - mini);
  return amplitude;
}

}  // namespace zuma
