#include "dialogs/qt/points_de_feuille.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStyle>
#include <utility>

namespace zuma::qt {
namespace {

constexpr QRgb kFondDesFautes = qRgb(255, 224, 160);

}  // namespace

FeuilleEtalonnage::Case CaseDe(const QModelIndex& où) {
  return {où.row() + 1, où.column()};
}

PointsDeFeuille::PointsDeFeuille(Ref<FeuilleEtalonnage> feuille, const Mots& mots, QObject* parent)
    : QAbstractTableModel(parent),
      feuille_(std::move(feuille)),
      pasUnNombre_(mots("Texte cellule sans nombre",
                        "This cell holds no number: the calibration cannot be saved.")),
      inutile_(
          mots("Texte rangee inutile", "This row is not used: it stands behind the last point.")),
      utilisées_(feuille_->DernièreRangée()) {}

int PointsDeFeuille::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : FeuilleEtalonnage::kRangées - 1;
}

int PointsDeFeuille::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : FeuilleEtalonnage::kColonnes;
}

QVariant PointsDeFeuille::data(const QModelIndex& où, int rôle) const {
  if (!où.isValid()) return {};
  if (rôle == Qt::DisplayRole) return EnQt(feuille_->Cellule(CaseDe(où)));
  if (rôle == Qt::TextAlignmentRole) return Qt::AlignCenter;
  if (!feuille_->CelluleLisible(CaseDe(où))) return Marque(rôle);
  return où.row() < utilisées_ ? QVariant() : MarqueInutile(rôle);
}

QVariant PointsDeFeuille::MarqueInutile(int rôle) const {
  if (rôle == Qt::ForegroundRole) {
    return QApplication::palette().color(QPalette::Disabled, QPalette::Text);
  }
  const bool dit = rôle == Qt::ToolTipRole || rôle == Qt::AccessibleDescriptionRole;
  return dit ? QVariant(inutile_) : QVariant();
}

// A colour for those who see it, a sign and words for everybody.
QVariant PointsDeFeuille::Marque(int rôle) const {
  switch (rôle) {
    case Qt::BackgroundRole:
      return QColor(kFondDesFautes);
    case Qt::ForegroundRole:
      return QColor(Qt::black);
    case Qt::DecorationRole:
      return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return pasUnNombre_;
    default:
      return {};
  }
}

QVariant PointsDeFeuille::headerData(int rang, Qt::Orientation sens, int rôle) const {
  if (rôle != Qt::DisplayRole) return QAbstractTableModel::headerData(rang, sens, rôle);
  if (sens == Qt::Vertical) return rang + 1;
  return EnQt(feuille_->Cellule({0, rang}));
}

void PointsDeFeuille::Relit() {
  utilisées_ = feuille_->DernièreRangée();
  emit dataChanged(index(0, 0), index(rowCount({}) - 1, columnCount({}) - 1));
  emit headerDataChanged(Qt::Horizontal, 0, columnCount({}) - 1);
}

}  // namespace zuma::qt
