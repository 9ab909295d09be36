#pragma once

#include <QList>
#include <QPointF>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace zuma::host {

/// What a quantity was over the last seconds, in a fixed number of cells of equal time that keep
/// the extremes: a peak shows whatever the span, and memory and painting are bounded.
class Historique {
 public:
  static constexpr std::int64_t kCases = 300;
  static constexpr double kSilence = 1;  ///< seconds without a note that are a gap

  /// `étendue` in seconds.
  explicit Historique(double étendue)
      : largeur_(étendue / static_cast<double>(kCases)), cases_(kCases) {}

  /// A reading at `secondes`, or that there was none.
  void Note(double secondes, std::optional<double> valeur);
  /// The runs of readings between gaps, oldest first. Abscissas are seconds before `maintenant`,
  /// at most 0.
  [[nodiscard]] std::vector<QList<QPointF>> Segments(double maintenant) const;

 private:
  struct Case {
    std::int64_t rang = -1;
    bool lue = false;
    bool trouAvant = false;  ///< a reading was missing before the first one of the cell
    bool trouAprès = false;  ///< the same behind it
    bool monte = true;       ///< the minimum came first
    double mini = 0;
    double maxi = 0;
  };
  [[nodiscard]] std::int64_t RangDe(double secondes) const;
  [[nodiscard]] static std::size_t Place(std::int64_t rang) {
    return static_cast<std::size_t>(rang % kCases);
  }

  double largeur_;
  std::vector<Case> cases_;
};

}  // namespace zuma::host
