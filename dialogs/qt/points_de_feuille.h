#pragma once

#include <QAbstractTableModel>

#include "dialogs/feuille_etalonnage.h"
#include "dialogs/qt/mots.h"

namespace zuma::qt {

[[nodiscard]] FeuilleEtalonnage::Case CaseDe(const QModelIndex& où);

/// The cells of a calibration form as a table shows them; nothing is kept here.
class PointsDeFeuille final : public QAbstractTableModel {
 public:
  PointsDeFeuille(Ref<FeuilleEtalonnage> feuille, const Mots& mots, QObject* parent);

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& où, int rôle) const override;
  [[nodiscard]] QVariant headerData(int rang, Qt::Orientation sens, int rôle) const override;

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
