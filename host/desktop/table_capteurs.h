#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "core/chassis.h"
#include "host/desktop/textes.h"

namespace zuma::host {

/// Sensors that the curves show, by rank; the table ticks them.
using CourbesChoisies = std::vector<bool>;

/// The sensors of the frame, a line each, as they stand when `Rafraîchit` is called.
class TableCapteurs : public QAbstractTableModel {
 public:
  enum Colonne : int { Nom, Valeur, Points, Etat, Marques, Mini, Maxi, Limites, kColonnes };

  TableCapteurs(Chassis& chassis, const Textes& textes, CourbesChoisies& courbes);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int rôle) const override;
  bool setData(const QModelIndex& index, const QVariant& valeur, int rôle) override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int rôle) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

  /// As many as there are ways to draw one; painting more would hold the passes up: two hundred
  /// curves made the longest gap between passes 76 ms, where two hundred sensors alone have 14 and
  /// nineteen 12.
  static constexpr std::ptrdiff_t kCourbesAuPlus = 16;

  void Rafraîchit();
  [[nodiscard]] Capteur* CapteurDe(const QModelIndex& index) const;
  /// Takes the sensor into the curves, or out of them. Nothing when they are full.
  void BasculeLaCourbe(const QModelIndex& index);

 private:
  [[nodiscard]] QString Texte(const Capteur& capteur, int colonne) const;
  [[nodiscard]] QString TexteDeLEtat(const Capteur& capteur) const;
  [[nodiscard]] QString TexteDesMarques(const Capteur& capteur, int décimales) const;

  [[nodiscard]] bool Complet(std::size_t rang) const;

  const Textes& textes_;
  CourbesChoisies& courbes_;
  std::vector<CapteurRef> capteurs_;
};

/// The name to show: the displayed one, or that of the sensor.
[[nodiscard]] QString NomDe(const Capteur& capteur);

}  // namespace zuma::host
