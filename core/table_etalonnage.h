#pragma once

#include <array>
#include <cstdint>

namespace zuma {

/// Calibration table of a sensor or a command: up to 20 rows of units and points, looked up in
/// both directions. Index 0 exists and is never loaded.
class TableEtalonnage {
 public:
  static constexpr std::int16_t kMaxPoints = 20;

  /// Unit value of row `indice`, 0 to 20; outside, failure 9.
  [[nodiscard]] double PointX(std::int16_t indice) const;
  void PointX(std::int16_t indice, double unités);
  /// Point value of row `indice`, 0 to 20; outside, failure 9.
  [[nodiscard]] double PointY(std::int16_t indice) const;
  void PointY(std::int16_t indice, double points);

  /// Points to units.
  [[nodiscard]] double VersUnités(double points) const;
  /// Units to points.
  [[nodiscard]] double VersPoints(double unités) const;

 private:
  std::array<double, kMaxPoints + 1> unités_{};
  std::array<double, kMaxPoints + 1> points_{};
};

}  // namespace zuma
