#pragma once

#include <algorithm>
#include <limits>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::sim {

/// Something of the simulated machine that happens at an instant of its own, whether the library
/// looks or not.
class Echéance {
 public:
  /// No instant at all.
  static constexpr double kJamais = std::numeric_limits<double>::infinity();

  virtual ~Echéance() = default;
  /// Instant at which something happens next, in microseconds; `kJamais` for none.
  [[nodiscard]] virtual double Prochaine() const noexcept = 0;
  /// That instant has come, and the clock stands there.
  virtual void Arrive() = 0;
};

/// Clock of the simulated machine, in microseconds. Each read moves it a little, so that busy
/// waits end; nothing else does but `Avance` and `Dort`, so that a run repeats exactly. Whatever
/// falls due on the way happens at its own instant.
class HorlogeVirtuelle : public ZED_Timer, public Horloge {
 public:
  /// `pas`: microseconds that one read takes.
  explicit HorlogeVirtuelle(double pas = 1, double heureDeDépart = 8 * 3600)
      : pas_(pas), départ_(heureDeDépart) {}

  [[nodiscard]] double LitMicrosecondes() override {
    Avance(pas_);
    return heure_;
  }
  /// The time without moving it, for the twins.
  [[nodiscard]] double Maintenant() const noexcept { return heure_; }
  /// Moves the time on; what falls due on the way happens at its own instant.
  void Avance(double microsecondes) {
    const double cible = heure_ + microsecondes;
    if (cible >= prochaine_) FaitArriver(cible);
    heure_ = std::max(heure_, cible);
  }

  /// Sets the clock of the day forwards by that many seconds, or backwards; the time that
  /// `LitMicrosecondes` counts goes on.
  void RègleHeure(double secondes) noexcept { départ_ += secondes; }
  [[nodiscard]] std::string TexteHeure() const override;
  void Dort(double secondes) override { Avance(secondes * 1e6); }

  /// Makes that one happen from now on, until `Quitte`.
  void Suit(Echéance& échéance) { suivies_.push_back(&échéance); }
  /// That one does not happen any more.
  void Quitte(Echéance& échéance) noexcept { std::erase(suivies_, &échéance); }
  /// To be told whenever the next instant of a followed one comes sooner than it was.
  void Réveille(double heure) noexcept { prochaine_ = std::min(prochaine_, heure); }

 private:
  void FaitArriver(double cible);

  double heure_ = 0;
  double pas_;
  double départ_;  ///< seconds since midnight at time 0
  double prochaine_ = Echéance::kJamais;
  std::vector<Echéance*> suivies_;
};

}  // namespace zuma::sim
