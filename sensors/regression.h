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
  static constexpr std::size_t kCapacité = 5000;

  /// Adds the sample `v` at `t` seconds and gives the slope in units per second; N is the length
  /// of the run, a real number that keeps its fraction. Nothing when the slope is undefined: the
  /// sample is then not kept. Fails with 9 past the capacity: N must not exceed 5000.
  [[nodiscard]] std::optional<double> Ajoute(double t, double v, double N);

 private:
  // N ΣT² - (ΣT)² is a small difference of large numbers when the timer counts from the start of
  // the machine; the wider type keeps the slope meaningful after weeks.
  using Large = long double;
  struct Sommes {
    Large T = 0;
    Large V = 0;
    Large T2 = 0;
    Large TV = 0;
    void Remplace(double t, double v, double tParti, double vParti);
  };

  Sommes sommes_;
  std::array<double, kCapacité + 1> T_{};
  std::array<double, kCapacité + 1> V_{};
  std::int16_t mintIndexRégression_ = 1;
};

}  // namespace zuma
