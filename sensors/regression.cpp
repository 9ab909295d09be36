#include "sensors/regression.h"

#include "core/echec.h"

namespace zuma {

void Régression::Sommes::Remplace(double t, double v, double tParti, double vParti) {
  const Large lt = t;
  const Large ltParti = tParti;
  T = T - tParti + t;
  V = V - vParti + v;
  T2 = T2 - ltParti * tParti + lt * t;
  TV = TV - ltParti * vParti + lt * v;
}

std::optional<double> Régression::Ajoute(double t, double v, double N) {
  const auto i = static_cast<std::size_t>(mintIndexRégression_);
  if (i > kCapacité) throw Echec(Numéro::IndiceHorsPlage);
  Sommes s = sommes_;
  s.Remplace(t, v, T_[i], V_[i]);
  const Large D = N * s.T2 - s.T * s.T;
  if (D == 0) return {};
  sommes_ = s;
  T_[i] = t;
  V_[i] = v;
  ++mintIndexRégression_;
  if (mintIndexRégression_ > N) mintIndexRégression_ = 1;
  return static_cast<double>((N * s.TV - s.V * s.T) / D);
}

}  // namespace zuma
