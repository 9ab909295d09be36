#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace zuma {

/// Least-squares slope of a value against time over a sliding run of samples, in constant time:
/// running sums, and rings of fixed memory to take the oldest sample out.
///
/// The run is not filled beforehand: until N samples have come, the empty entries count as zeros
/// while N stays the divisor.
class Régression {
 public:
  /// Longest run, in samples.
  static constexpr std::size_t kCapacité = 5000;

  /// Adds the sample `v` at `t` seconds and gives the slope in units per second; N is the length
  /// of the run, a real number that keeps its fraction. Nothing when the slope is undefined: the
  /// sample is then not kept. Nor is a value that is no number, whose slope is none either. Fails
  /// with 9 past the capacity: N must not exceed 5000.
  [[nodiscard]] std::optional<double> Ajoute(double t, double v, double N);

 private:
  // All samples but the one of rank `i` stand at that time: sums that were rounded do not tell.
  [[nodiscard]] bool ToutesA(double t, std::size_t i) const;

  // Sums over the samples kept, times taken from `origine_`. N ΣT² - (ΣT)² is a small difference
  // of large numbers when the timer counts from the start of the machine; brought to a near
  // origin, the same formula stays exact.
  struct Sommes {
    double U = 0;
    double V = 0;
    double U2 = 0;
    double UV = 0;
    void Compte(double u, double v, double signe);
    void Décale(double delta, double nombre);
  };

  Sommes sommes_;
  double origine_ = 0;  ///< seconds
  std::array<double, kCapacité + 1> T_{};
  std::array<double, kCapacité + 1> V_{};
  std::size_t remplis_ = 0;  ///< entries that hold a sample
  std::int16_t mintIndexRégression_ = 1;
};

}  // namespace zuma
