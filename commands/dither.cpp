#include "commands/dither.h"

#include <limits>

namespace zuma {
namespace {

double DemiPériode(double fréquence) noexcept {
  return 1 / fréquence / 2;
}

}  // namespace

void Dither::Recale(double t) noexcept {
  retard_ = 0;
  prochaine_ = t;
  dernière_ = t;
}

void Dither::Presse() noexcept {
  prochaine_ = std::numeric_limits<double>::lowest();
}

// The lateness adds to the next half period, and is taken off the lateness of the one after: the
// sign is that of machines in service.
void Dither::PlanifieAvecRetard(double t, double fréquence) noexcept {
  const double demi = DemiPériode(fréquence);
  retard_ = t - dernière_ - retard_ - demi;
  dernière_ = t;
  prochaine_ = demi + retard_ + t;
}

void Dither::Planifie(double t, double fréquence) noexcept {
  prochaine_ = DemiPériode(fréquence) + t;
}

double Dither::Bascule(double base, double amplitude) noexcept {
  const double demi = amplitude / 2;
  const double envoyée = hautEnsuite_ ? base + demi : base - demi;
  hautEnsuite_ = !hautEnsuite_;
  return envoyée;
}

double AmplitudeUtilisable(double base, double amplitude, double mini, double maxi) noexcept {
  if (amplitude / 2 > maxi - base) return 2 * (maxi - base);
  if (amplitude / 2 > base - mini) return 2 * (base - mini);
  return amplitude;
}

}  // namespace zuma
