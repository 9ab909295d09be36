#pragma once

#include <QAbstractTableModel>

#include "dialogs/feuille_etalonnage.h"
#include "dialogs/qt/mots.h"

namespace zuma::qt {

/// Cell of the form at that place of the table.
[[nodiscard]] FeuilleEtalonnage::Case CaseDe(const QModelIndex& où);

/// The cells of a calibration form as a table shows them; nothing is kept here.
class PointsDeFeuille final : public QAbstractTableModel {
 public:
  /// The cells of `feuille`, with the words of its header.
  PointsDeFeuille(Ref<FeuilleEtalonnage> feuille, const Mots& mots, QObject* parent);

  ///@{
  /// The table as Qt asks for it: 20 rows of two columns, and their captions.
  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& où, int rôle) const override;
  [[nodiscard]] QVariant headerData(int rang, Qt::Orientation sens, int rôle) const override;
  ///@}

  /// The form holds other texts now.
  void Relit();

 private:
  [[nodiscard]] QVariant Marque(int rôle) const;
  [[nodiscard]] QVariant MarqueInutile(int rôle) const;

  Ref<FeuilleEtalonnage> feuille_;
  QString pasUnNombre_;
  QString inutile_;
  int utilisées_;
};

}  // namespace zuma::qt
