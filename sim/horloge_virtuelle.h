#pragma once

#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::sim {

/// Clock of the simulated machine, in microseconds. Each read moves it a little, so that busy
/// waits end; nothing else does but `Avance` and `Dort`, so that a run repeats exactly.
class HorlogeVirtuelle : public ZED_Timer, public Horloge {
 public:
  /// `pas`: microseconds that one read takes.
  explicit HorlogeVirtuelle(double pas = 1, double heureDeDépart = 8 * 3600)
      : pas_(pas), départ_(heureDeDépart) {}

  [[nodiscard]] double LitMicrosecondes() override { return heure_ += pas_; }
  /// The time without moving it, for the twins.
  [[nodiscard]] double Maintenant() const noexcept { return heure_; }
  void Avance(double microsecondes) noexcept { heure_ += microsecondes; }

  [[nodiscard]] std::string TexteHeure() const override;
  void Dort(double secondes) override { Avance(secondes * 1e6); }

 private:
  double heure_ = 0;
  double pas_;
  double départ_;  ///< seconds since midnight at time 0
};

}  // namespace zuma::sim
