#include "host/desktop/table_capteurs.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/desktop/etat_capteur.h"
#include "sensors/lecture.h"

namespace zuma::host {
namespace {

constexpr std::array<std::string_view, TableCapteurs::kColonnes> kEntêtes{
    "Colonne capteur", "Colonne valeur", "Colonne points", "Colonne etat",
    "Colonne marques", "Colonne mini",   "Colonne maxi",   "Colonne limites"};

// Settled by the limits, so that the digits of a moving value stay in place; by the largest reading
// where the sensor has none.
int Décimales(const Capteur& capteur) {
  const double limites =
      std::max(std::abs(capteur.MiniCapteurUnité()), std::abs(capteur.MaxiCapteurUnité()));
  if (limites > 0) return DécimalesPour(limites);
  return DécimalesPour(
      std::max({1.0, std::abs(capteur.MiniDétecté()), std::abs(capteur.MaxiDétecté())}));
}

bool AlignéADroite(int colonne) {
  return colonne == TableCapteurs::Valeur || colonne == TableCapteurs::Points ||
         colonne == TableCapteurs::Mini || colonne == TableCapteurs::Maxi;
}

}  // namespace

QString NomDe(const Capteur& capteur) {
  const std::string& affiché = capteur.NomAfficheDuCapteur();
  return NomOuNuméro(SansBlancs(affiché).empty() ? capteur.NomDuCapteur() : affiché, capteur.Key());
}

TableCapteurs::TableCapteurs(Chassis& chassis, const Textes& textes, CourbesChoisies& courbes)
    : textes_(textes),
      courbes_(courbes),
      capteurs_(chassis.Capteurs()->begin(), chassis.Capteurs()->end()) {}

int TableCapteurs::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(capteurs_.size());
}

int TableCapteurs::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColonnes;
}

QVariant TableCapteurs::data(const QModelIndex& index, int rôle) const {
  const Capteur* capteur = CapteurDe(index);
  if (capteur == nullptr) return {};
  const int colonne = index.column();
  const auto couleur = [](const QColor& c) { return c.isValid() ? QVariant(c) : QVariant(); };
  switch (rôle) {
    case Qt::DisplayRole:
      return Texte(*capteur, colonne);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter |
                                 (AlignéADroite(colonne) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::BackgroundRole:
      return colonne == Etat ? couleur(EtatDe(*capteur).fond) : QVariant();
    case Qt::ForegroundRole:
      return colonne == Etat ? couleur(EtatDe(*capteur).encre) : QVariant();
    case Qt::CheckStateRole:
      if (colonne != Nom) return {};
      return courbes_[static_cast<std::size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
    case Qt::ToolTipRole:
      if (Complet(static_cast<std::size_t>(index.row()))) return textes_("Aide courbes");
      return EnQt(capteur->Label()) + "\n" + textes_("Texte etalonnage") + " " +
             EnQt(capteur->DateEtalonnage()) + " " + EnQt(capteur->NomEtalonneur());
    default:
      return {};
  }
}

// An overrun keeps its word: that its reading is old too is told behind it.
QString TableCapteurs::TexteDeLEtat(const Capteur& capteur) const {
  constexpr std::string_view kAncien = "Etat ancien";
  const EtatAffiché& état = EtatDe(capteur);
  const QString texte = EnQt(état.signe) + " " + textes_(état.clé);
  if (!EstAncien(capteur)) return texte;
  return texte + (état.clé == kAncien ? " " : ", " + textes_(kAncien) + " ") +
         textes_.Nombre(capteur.Age(), 1) + " s";
}

QString TableCapteurs::Texte(const Capteur& capteur, int colonne) const {
  const int décimales = Décimales(capteur);
  const auto nombre = [&](double valeur) { return textes_.Nombre(valeur, décimales); };
  switch (colonne) {
    case Nom:
      return NomDe(capteur);
    case Valeur: {
      const auto lecture = LectureDe(capteur);
      return AvecUnité(lecture ? nombre(*lecture) : Absent(), capteur.UnitéEtalonnage());
    }
    case Points:
      return capteur.Canal() ? textes_.Nombre(capteur.ValeurEnPoints(), 0) : Absent();
    case Etat:
      return TexteDeLEtat(capteur);
    case Marques:
      return TexteDesMarques(capteur, décimales);
    case Mini:
      return nombre(capteur.MiniDétecté());
    case Maxi:
      return nombre(capteur.MaxiDétecté());
    default:
      return textes_.Limites(capteur.MiniCapteurUnité(), capteur.MaxiCapteurUnité(), {});
  }
}

QString TableCapteurs::TexteDesMarques(const Capteur& capteur, int décimales) const {
  QStringList marques;
  if (capteur.EtatRAZ() == ENUM_OPERATION_MAV::Acquisition) marques += textes_("Marque zero");
  if (capteur.EtatTare() == ENUM_OPERATION_MAV::Acquisition) {
    marques += textes_("Marque tarage");
  } else if (capteur.EtatDeLaTare()) {
    marques += textes_("Marque tare") + " " + textes_.Nombre(capteur.ValeurTare(), décimales);
  }
  if (capteur.ModeEdition()) marques += textes_("Marque etalonnage");
  return marques.join(", ");
}

bool TableCapteurs::setData(const QModelIndex& index, const QVariant&, int rôle) {
  if (rôle != Qt::CheckStateRole || CapteurDe(index) == nullptr) return false;
  BasculeLaCourbe(index);
  return true;
}

QVariant TableCapteurs::headerData(int section, Qt::Orientation orientation, int rôle) const {
  if (orientation != Qt::Horizontal || rôle != Qt::DisplayRole) return {};
  return textes_(kEntêtes[static_cast<std::size_t>(section)]);
}

Qt::ItemFlags TableCapteurs::flags(const QModelIndex& index) const {
  const Qt::ItemFlags usuels = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return index.column() == Nom ? usuels | Qt::ItemIsUserCheckable : usuels;
}

void TableCapteurs::Rafraîchit() {
  if (!capteurs_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, kColonnes - 1));
}

Capteur* TableCapteurs::CapteurDe(const QModelIndex& index) const {
  return index.isValid() ? capteurs_[static_cast<std::size_t>(index.row())].Brut() : nullptr;
}

// True where no other curve can be added.
bool TableCapteurs::Complet(std::size_t rang) const {
  return !courbes_[rang] && std::ranges::count(courbes_, true) >= kCourbesAuPlus;
}

void TableCapteurs::BasculeLaCourbe(const QModelIndex& index) {
  const auto rang = static_cast<std::size_t>(index.row());
  if (Complet(rang)) return;
  courbes_[rang] = !courbes_[rang];
  const QModelIndex coche = index.siblingAtColumn(Nom);
  emit dataChanged(coche, coche, {Qt::CheckStateRole});
}

}  // namespace zuma::host
