#include "sensors/regression.h"

#include <cmath>

#include "base/echec.h"

namespace zuma {

void Régression::Sommes::Compte(double u, double v, double signe) {
  U += signe * u;
  V += signe * v;
  U2 += signe * u * u;
  UV += signe * u * v;
}

// Times from an origin later by `delta`.
void Régression::Sommes::Décale(double delta, double nombre) {
  U2 += delta * (nombre * delta - 2 * U);
  UV -= delta * V;
  U -= nombre * delta;
}

bool Régression::ToutesA(double t, std::size_t i) const {
  for (std::size_t k = 1; k <= remplis_; ++k) {
    if (k != i && T_[k] != t) return false;
  }
  return true;
}

std::optional<double> Régression::Ajoute(double t, double v, double N) {
  const auto i = static_cast<std::size_t>(mintIndexRégression_);
  if (i > kCapacité) throw Echec(Numéro::IndiceHorsPlage);
  const double o = remplis_ == 0 ? t : origine_;
  const std::size_t remplis = i > remplis_ ? i : remplis_;
  Sommes s = sommes_;
  if (i <= remplis_) s.Compte(T_[i] - o, V_[i], -1);
  s.Compte(t - o, v, 1);

  // N ΣT² - (ΣT)² and N ΣTV - ΣV ΣT with T = o + U: what is left of `o` stands for the entries
  // that N counts and the run does not hold.
  const auto n = static_cast<double>(remplis);
  if (n == N && ToutesA(t, i)) return {};
  const double D = (N - n) * o * (n * o + 2 * s.U) + N * s.U2 - s.U * s.U;
  if (D == 0) return {};
  const double pente = ((N - n) * o * s.V + N * s.UV - s.V * s.U) / D;

  // Shown once, and not kept: it would stay in the sums for ever.
  if (!std::isfinite(v)) return pente;

  sommes_ = s;
  origine_ = o;
  remplis_ = remplis;
  T_[i] = t;
  V_[i] = v;
  ++mintIndexRégression_;
  if (mintIndexRégression_ > N) {
    mintIndexRégression_ = 1;
    sommes_.Décale(t - origine_, n);
    origine_ = t;
  }
  return pente;
}

}  // namespace zuma
