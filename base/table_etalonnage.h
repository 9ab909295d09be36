#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zuma {

/// One row of a look-up: ordinate `y` at abscissa `x`.
struct PointDeTable {
  /// Abscissa.
  double x = 0;
  /// Ordinate.
  double y = 0;
};

/// `Interpole` in one direction, prepared once for many look-ups. Linear between neighbours in the
/// order of the abscissas; beyond the ends the end segment is prolonged, so that an overrange
/// still trips a limit. One point is a line through the origin, none is the identity. A segment of
/// zero width is passed over: at a jump the value before it is given. What is no number gives none.
class Interpolation {
 public:
  /// Rows that a table can hold.
  static constexpr std::size_t kMaxPoints = 20;

  /// Takes the used rows (at most 20), in any order; those of one abscissa are taken in the
  /// direction in which all were written.
  void Prépare(std::span<const PointDeTable> points);

  /// Ordinate at `x`. Fails with 11 when all points share one abscissa, or when the only point
  /// stands at abscissa 0: such a table gives no value in this direction.
  [[nodiscard]] double Interpole(double x) const {
    if (!(dessus_ < x && x <= jusquÀ_) && !Cherche(x)) return x;
    const auto& [début, fin] = segment_;
    return SurLaDroite(début.y, fin.y, (x - début.x) / (fin.x - début.x));
  }

 private:
  struct Segment {
    PointDeTable début;
    PointDeTable fin;
  };

  [[nodiscard]] bool Cherche(double x) const;
  // `std::lerp`, exact at both ends and never going back, bit for bit: what it asks of the two
  // ordinates each time is known of a segment.
  [[nodiscard]] double SurLaDroite(double a, double b, double t) const {
    if (changeDeSigne_) return t * b + (1 - t) * a;
    if (t == 1) return b;
    const double y = a + t * (b - a);
    return (t > 1) == monte_ ? std::max(b, y) : std::min(b, y);
  }

  std::array<Segment, kMaxPoints> segments_{};
  std::size_t nombre_ = 0;
  // Of the last look-up: readings move little from one to the next, and most stay between the same
  // two abscissas.
  mutable Segment segment_{};
  mutable double dessus_ = 0;
  mutable double jusquÀ_ = 0;
  mutable bool changeDeSigne_ = false;  ///< from one ordinate to the other, or touches 0
  mutable bool monte_ = false;
  bool identité_ = true;
};

/// Calibration table of a sensor or a command: up to 20 rows of units and points, looked up in
/// both directions. Rows after the last one that is not (0, 0) are unused, but for a (0, 0) to
/// which both columns of the rows before it go on, two at least: it is the end of a table written
/// towards zero. Index 0 exists, is never loaded and takes no part in a look-up.
class TableEtalonnage {
 public:
  /// Rows that can be used, from 1.
  static constexpr std::int16_t kMaxPoints = 20;
  /// One column; row 0 exists and takes no part.
  using Colonne = std::array<double, kMaxPoints + 1>;

  ///@{
  /// Unit value of row `indice`, 0 to 20; outside, failure 9.
  [[nodiscard]] double PointX(std::int16_t indice) const;
  void PointX(std::int16_t indice, double unités);
  ///@}
  ///@{
  /// Point value of row `indice`, 0 to 20; outside, failure 9.
  [[nodiscard]] double PointY(std::int16_t indice) const;
  void PointY(std::int16_t indice, double points);
  ///@}

  /// Runs `travail` on the columns of units and of points: a whole table is prepared once, not
  /// after each of its values. What it wrote before it failed holds.
  template <class Travail>
  void Remplit(Travail&& travail) {
    struct Fin {
      TableEtalonnage& table;
      ~Fin() { table.Prépare(); }
    } fin{*this};
    travail(unités_, points_);
  }

  /// Points to units; fails like `Interpolation::Interpole`.
  [[nodiscard]] double VersUnités(double points) const { return versUnités_.Interpole(points); }
  /// Units to points; fails like `Interpolation::Interpole`.
  [[nodiscard]] double VersPoints(double unités) const { return versPoints_.Interpole(unités); }
  /// Rows in use of these columns, from row 1 on.
  [[nodiscard]] static std::size_t RangéesUtiles(const Colonne& unités, const Colonne& points);

  /// Last row that is used; 0 when none is.
  [[nodiscard]] std::size_t DernièreRangée() const { return RangéesUtiles(unités_, points_); }

 private:
  void Prépare();

  Colonne unités_{};
  Colonne points_{};
  Interpolation versUnités_;
  Interpolation versPoints_;
};

}  // namespace zuma
