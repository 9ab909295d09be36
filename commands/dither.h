#pragma once

namespace zuma {

/// Schedule of a dither, the small square wave that keeps the spool of a valve moving. All times
/// are in seconds. The wave is sampled by the refresh: its frequency is met to within one pass.
class Dither {
 public:
  /// Starts the schedule at `t`; the side of the next half period stays.
  void Recale(double t) noexcept;
  /// Makes the next refresh toggle, whatever its time.
  void Presse() noexcept;
  [[nodiscard]] bool EstDû(double t) const noexcept { return t > prochaine_; }

  /// Plans the toggle after the one at `t`, for a wave of `fréquence` hertz: with the lateness of
  /// the toggles carried along, or without.
  void PlanifieAvecRetard(double t, double fréquence) noexcept;
  void Planifie(double t, double fréquence) noexcept;

  /// Value of this half period, on either side of `base`; the first is the low one.
  [[nodiscard]] double Bascule(double base, double amplitude) noexcept;

  [[nodiscard]] double Retard() const noexcept { return retard_; }

 private:
  double prochaine_ = 0;
  double dernière_ = 0;
  double retard_ = 0;
  bool hautEnsuite_ = false;
};

/// Peak-to-peak amplitude that keeps the wave around `base` between the limits.
[[nodiscard]] double AmplitudeUtilisable(double base, double amplitude, double mini,
                                         double maxi) noexcept;

}  // namespace zuma
