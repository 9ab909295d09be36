#include "host/desktop/graphique.h"

#include <QEvent>
#include <QLegendMarker>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zuma::host {
namespace {

constexpr std::array<QRgb, 8> kCouleurs{0x1f5fa8, 0xc03a1e, 0x2a7d3b, 0x7b3fa0,
                                        0xa8761a, 0x137c85, 0x9a1f5b, 0x454545};
constexpr int kPlusClair = 160;  // per cent
constexpr int kGraduations = 4;

QPen Plume(int rang) {
  const auto n = static_cast<std::size_t>(rang);
  const QColor couleur(kCouleurs[n % kCouleurs.size()]);
  // Dashes would tell them apart better, and cost a dense curve fifty times as much.
  QPen plume(n / kCouleurs.size() % 2 == 0 ? couleur : couleur.lighter(kPlusClair));
  plume.setWidthF(1.5);
  plume.setCosmetic(true);
  return plume;
}

// The step of 1, 2 or 5 that makes about `kGraduations` of the width.
double PasRond(double largeur) {
  const double brut = largeur / kGraduations;
  const double puissance = std::pow(10, std::floor(std::log10(brut)));
  for (const double facteur : {1.0, 2.0, 5.0}) {
    if (brut <= facteur * puissance) return facteur * puissance;
  }
  return 10 * puissance;
}

}  // namespace

void Graphique::Etendue::Prend(double valeur) {
  mini = std::min(mini, valeur);
  maxi = std::max(maxi, valeur);
}

Graphique::Graphique(const Textes& textes, QWidget* mère)
    : QChartView(mère), textes_(textes), abscisse_(new QValueAxis(this)) {
  chart()->setAnimationOptions(QChart::NoAnimation);
  chart()->setLocalizeNumbers(true);
  chart()->setLocale(textes.Locale());
  chart()->setMargins({2, 2, 2, 2});
  chart()->setBackgroundRoundness(0);
  chart()->legend()->setAlignment(Qt::AlignTop);
  chart()->legend()->setMarkerShape(QLegend::MarkerShapeFromSeries);
  Habille(*abscisse_);
  chart()->legend()->setFont(font());
  chart()->addAxis(abscisse_, Qt::AlignBottom);
  setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
  setFocusPolicy(Qt::NoFocus);
}

void Graphique::Abscisse(const QString& titre, double début, int graduations) {
  libre_ = false;
  abscisse_->setTitleText(titre);
  abscisse_->setRange(début, 0);
  abscisse_->setTickCount(graduations);
  abscisse_->setLabelFormat("%.0f");
}

void Graphique::AbscisseLibre(const QString& titre) {
  libre_ = true;
  abscisse_->setTitleText(titre);
}

// The chart does not follow the font of its widget by itself.
void Graphique::Habille(QValueAxis& axe) const {
  QFont gras = font();
  gras.setBold(true);
  axe.setLabelsFont(font());
  axe.setTitleFont(gras);
}

void Graphique::changeEvent(QEvent* changement) {
  QChartView::changeEvent(changement);
  if (changement->type() != QEvent::FontChange) return;
  chart()->legend()->setFont(font());
  Habille(*abscisse_);
  for (const auto& [unité, ordonnée] : ordonnées_) Habille(*ordonnée.axe);
}

QValueAxis* Graphique::OrdonnéeDe(const Trace& trace) {
  Ordonnée& ordonnée = ordonnées_[trace.unité];
  ordonnée.plancher = std::max(ordonnée.plancher, trace.plancher);
  if (ordonnée.axe != nullptr) return ordonnée.axe;
  ordonnée.axe = new QValueAxis(this);
  ordonnée.axe->setTitleText(trace.unité.empty() ? textes_("Sans unite") : EnQt(trace.unité));
  Habille(*ordonnée.axe);
  chart()->addAxis(ordonnée.axe, ordonnées_.size() % 2 == 1 ? Qt::AlignLeft : Qt::AlignRight);
  return ordonnée.axe;
}

QLineSeries* Graphique::NouvelleSérie(Courbe& courbe, const QString& nom, int couleur) {
  auto* série = new QLineSeries(this);
  série->setName(nom);
  série->setPen(Plume(couleur));
  chart()->addSeries(série);
  série->attachAxis(abscisse_);
  série->attachAxis(courbe.ordonnée);
  courbe.séries.push_back(série);
  return série;
}

void Graphique::Traces(std::span<const Trace> traces) {
  chart()->removeAllSeries();
  for (const auto& [unité, ordonnée] : ordonnées_) {
    chart()->removeAxis(ordonnée.axe);
    ordonnée.axe->deleteLater();
  }
  ordonnées_.clear();
  courbes_.clear();
  for (const Trace& trace : traces) {
    Courbe courbe{OrdonnéeDe(trace), {}};
    const QString nom = trace.nom + (trace.unité.empty() ? "" : " [" + EnQt(trace.unité) + "]");
    NouvelleSérie(courbe, nom, static_cast<int>(courbes_.size()));
    courbes_.push_back(std::move(courbe));
  }
}

void Graphique::MontreLaCourbe(std::size_t rang, const Segments& segments) {
  Courbe& courbe = courbes_[rang];
  const std::size_t nombre = std::min(segments.size(), kSegments);
  while (courbe.séries.size() < nombre) {
    QLineSeries* série = NouvelleSérie(courbe, {}, static_cast<int>(rang));
    for (QLegendMarker* marque : chart()->legend()->markers(série)) marque->setVisible(false);
  }
  for (std::size_t i = 0; i < courbe.séries.size(); ++i) {
    if (i < nombre) {
      courbe.séries[i]->replace(segments[segments.size() - nombre + i]);
    } else if (courbe.séries[i]->count() != 0) {
      courbe.séries[i]->clear();
    }
  }
}

void Graphique::Montre(const std::vector<Segments>& courbes) {
  constexpr double kInfini = std::numeric_limits<double>::infinity();
  std::map<QValueAxis*, Etendue> étendues;
  Etendue large{0, 0};
  for (std::size_t i = 0; i < std::min(courbes.size(), courbes_.size()); ++i) {
    Etendue& haute = étendues.try_emplace(courbes_[i].ordonnée, kInfini, -kInfini).first->second;
    for (const QList<QPointF>& segment : courbes[i]) {
      for (const QPointF& point : segment) {
        haute.Prend(point.y());
        large.Prend(point.x());
      }
    }
  }
  for (const auto& [unité, ordonnée] : ordonnées_) {
    Cadre(*ordonnée.axe, étendues.at(ordonnée.axe), ordonnée.plancher);
  }
  if (libre_) Cadre(*abscisse_, large, 0);
  for (std::size_t i = 0; i < std::min(courbes.size(), courbes_.size()); ++i) {
    MontreLaCourbe(i, courbes[i]);
  }
}

// A scale is kept while the curves stand in it and fill a third of it.
void Graphique::Cadre(QValueAxis& axe, const Etendue& étendue, double plancher) {
  if (étendue.mini > étendue.maxi) return;
  const double largeur = étendue.maxi - étendue.mini;
  const double présente = axe.max() - axe.min();
  constexpr double kPart = 1e-3;  // of the values: digits that nobody reads
  constexpr double kInfime = 1e-6;
  const double grandeur = std::max(std::abs(étendue.maxi), std::abs(étendue.mini));
  const double minimale = std::max(plancher, kPart * grandeur + kInfime);
  if (étendue.mini >= axe.min() && étendue.maxi <= axe.max() &&
      std::max(largeur, minimale) > présente / 3) {
    return;
  }
  const double voulue = std::max(largeur, minimale);
  const double pas = PasRond(voulue);
  const double bas = std::floor((étendue.mini - (voulue - largeur) / 2) / pas) * pas;
  double haut = bas;
  int graduations = 1;
  while (haut < étendue.maxi || graduations < 3) {
    haut += pas;
    ++graduations;
  }
  axe.setRange(bas, haut);
  axe.setTickCount(graduations);
  const int décimales = std::max(0, static_cast<int>(-std::floor(std::log10(pas) + 1e-9)));
  axe.setLabelFormat("%." + QString::number(décimales) + "f");
}

}  // namespace zuma::host
