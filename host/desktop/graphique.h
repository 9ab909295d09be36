#pragma once

#include <QChartView>
#include <QLineSeries>
#include <QValueAxis>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "host/desktop/textes.h"

namespace zuma::host {

/// A chart of a few curves over one abscissa, with an ordinate for each unit, whose scales move
/// only when the curves ask for it: laying out axes costs more than drawing lines.
class Graphique : public QChartView {
 public:
  /// Runs of points; a curve is interrupted between two of them.
  using Segments = std::vector<QList<QPointF>>;
  struct Trace {
    QString nom;
    std::string unité;
    double plancher = 0;  ///< height of the ordinate at least: noise is not stretched over the pane
  };

  explicit Graphique(const Textes& textes, QWidget* mère = nullptr);

  /// From `début` to 0.
  void Abscisse(const QString& titre, double début, int graduations);
  /// Stretches the abscissa, in round steps, to the points shown.
  void AbscisseLibre(const QString& titre);
  /// The curves to come, in the place of the ones shown.
  void Traces(std::span<const Trace> traces);
  /// Shows those points, a curve for each trace. Of a curve with more interruptions than
  /// `kSegments` the latest ones are shown.
  void Montre(const std::vector<Segments>& courbes);

  static constexpr std::size_t kSegments = 30;

 protected:
  void changeEvent(QEvent* changement) override;

 private:
  struct Ordonnée {
    QValueAxis* axe = nullptr;
    double plancher = 0;
  };
  struct Courbe {
    QValueAxis* ordonnée;
    std::vector<QLineSeries*> séries;
  };
  struct Etendue {
    double mini;
    double maxi;
    void Prend(double valeur);
  };

  void Habille(QValueAxis& axe) const;
  QLineSeries* NouvelleSérie(Courbe& courbe, const QString& nom, int couleur);
  QValueAxis* OrdonnéeDe(const Trace& trace);
  void MontreLaCourbe(std::size_t rang, const Segments& segments);
  static void Cadre(QValueAxis& axe, const Etendue& étendue, double plancher);

  const Textes& textes_;
  QValueAxis* abscisse_;
  bool libre_ = false;
  std::map<std::string, Ordonnée> ordonnées_;  ///< by unit
  std::vector<Courbe> courbes_;
};

}  // namespace zuma::host
