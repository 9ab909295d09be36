#pragma once

namespace zuma {

/// Schedule of a dither, the small square wave that keeps the spool of a valve moving. All times
/// are in seconds, on a clock that never goes back. The wave is sampled by the refresh: its
/// frequency is met to within one pass.
class Dither {
 public:
  /// Starts the schedule at `t`, on neither side; that of the next half period stays.
  void Recale(double t) noexcept;
  /// True once the planned toggle is past. One that was planned for a much slower wave counts as
  /// past.
  [[nodiscard]] bool EstDû(double t, double fréquence) const noexcept;

  ///@{
  /// Plans the toggle after the one at `t`, for a wave of `fréquence` hertz: with the lateness of
  /// the toggles carried along, half a period at most, or without.
  void PlanifieAvecRetard(double t, double fréquence) noexcept;
  void Planifie(double t, double fréquence) noexcept;
  ///@}

  /// Goes to the other side; the first is the low one.
  void Bascule() noexcept;
  /// Value of this half period, on its side of `base`; `base` itself before the first toggle.
  [[nodiscard]] double Valeur(double base, double amplitude) const noexcept;

 private:
  enum class Côté { Aucun, Bas, Haut };

  double prochaine_ = 0;
  double dernière_ = 0;
  double retard_ = 0;
  Côté côté_ = Côté::Aucun;
  bool hautEnsuite_ = false;
};

/// Peak-to-peak amplitude that keeps the wave around `base` between the limits.
[[nodiscard]] double AmplitudeUtilisable(double base, double amplitude, double mini,
                                         double maxi) noexcept;

}  // namespace zuma
