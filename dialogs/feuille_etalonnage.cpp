#include "dialogs/feuille_etalonnage.h"

#include <cmath>
#include <utility>

#include "base/colonnes.h"
#include "base/objet.h"
#include "base/outils_communs.h"
#include "dialogs/affichage_court.h"

namespace zuma {
namespace {

constexpr char32_t kRetourArrière = 8;
constexpr char32_t kEntrée = 13;
constexpr char32_t kEchappement = 27;
constexpr std::u32string_view kAcceptées = U"0123456789.,+-";

std::string ColonneDuPoint(int rangée, bool unités) {
  return "Point " + std::to_string(rangée) + (unités ? " - Unité" : " - Point");
}

}  // namespace

std::string FeuilleEtalonnage::Légende(std::string_view clé) const {
  if (clé.empty() || !traducteur_) return std::string(clé);
  return traducteur_->Traduit(clé, modèle_.légende, "Zuma");
}

std::size_t FeuilleEtalonnage::Rang(Case où) {
  const bool dedans =
      où.rangée >= 0 && où.rangée < kRangées && où.colonne >= 0 && où.colonne < kColonnes;
  if (!dedans) throw Echec(Numéro::IndiceHorsPlage);
  const auto rangée = static_cast<std::size_t>(où.rangée);
  return rangée * kColonnes + static_cast<std::size_t>(où.colonne);
}

const std::string& FeuilleEtalonnage::Cellule(Case où) const {
  return cellules_[Rang(où)].texte;
}

bool FeuilleEtalonnage::CelluleLisible(Case où) const {
  return !EstNul(OutilsCommuns::LitChampSûr(Valeur(Cellule(où))));
}

void FeuilleEtalonnage::ActiveCellule(Case où) {
  Text1_LostFocus();
  if (où.rangée == 0) return;
  text1_ = Cellule(où);
  text1Sur_ = où;
}

FeuilleEtalonnage::Suite FeuilleEtalonnage::Text1_KeyPress(char32_t code) {
  if (code == kEntrée) Text1_LostFocus();
  if (code == kEchappement) text1Sur_.reset();
  const bool passe = code == kRetourArrière || kAcceptées.find(code) != std::u32string_view::npos;
  return passe ? Suite::Passe : Suite::Mangée;
}

void FeuilleEtalonnage::Text1_LostFocus() {
  if (text1Sur_ && Cellule(*text1Sur_) != text1_) cellules_[Rang(*text1Sur_)] = {text1_, {}};
  text1Sur_.reset();
}

// The cell in hand counts as it is typed.
std::optional<double> FeuilleEtalonnage::NombreSaisi(int rangée, bool unités) const {
  const Case où{rangée, unités ? modèle_.unités : 1 - modèle_.unités};
  const auto& [texte, exact] = cellules_[Rang(où)];
  const std::string& saisi = text1Sur_ == où ? text1_ : texte;
  if (exact && saisi == texte) return exact;
  double nombre = 0;
  return LitNombre(saisi, nombre) ? std::optional(nombre) : std::nullopt;
}

// What holds no number makes its row a used one, and the table one that gives no value.
std::pair<TableEtalonnage, bool> FeuilleEtalonnage::TableSaisie() const {
  std::pair<TableEtalonnage, bool> saisie{{}, true};
  const auto lit = [&](std::int16_t rangée, bool unités) {
    const std::optional<double> nombre = NombreSaisi(rangée, unités);
    saisie.second = saisie.second && nombre;
    return nombre.value_or(1);
  };
  for (std::int16_t rangée = 1; rangée < kRangées; ++rangée) {
    saisie.first.PointX(rangée, lit(rangée, true));
    saisie.first.PointY(rangée, lit(rangée, false));
  }
  return saisie;
}

int FeuilleEtalonnage::DernièreRangée() const {
  return static_cast<int>(TableSaisie().first.DernièreRangée());
}

bool FeuilleEtalonnage::PeutInsérer() const {
  return NombreSaisi(kRangées - 1, true) == 0 && NombreSaisi(kRangées - 1, false) == 0;
}

void FeuilleEtalonnage::InsèreRangée(int rangée) {
  if (PeutInsérer()) Déplace(kRangées - 1, rangée, -1);
}

void FeuilleEtalonnage::SupprimeRangée(int rangée) {
  Déplace(rangée, kRangées - 1, 1);
}

// Each row from `première` takes what stands `pas` further; the last one is empty.
void FeuilleEtalonnage::Déplace(int première, int dernière, int pas) {
  Text1_LostFocus();
  for (int colonne = 0; colonne < kColonnes; ++colonne) {
    for (int rangée = première; rangée != dernière; rangée += pas) {
      cellules_[Rang({rangée, colonne})] = cellules_[Rang({rangée + pas, colonne})];
    }
    cellules_[Rang({dernière, colonne})] = {TexteDeNombre(0), 0.0};
  }
}

void FeuilleEtalonnage::AfficheSousLaTableSaisie(double entrée,
                                                 double (TableEtalonnage::*vers)(double) const) {
  valeurSaisie_ = "?";
  const auto& [table, lisible] = TableSaisie();
  if (!lisible) return;
  try {
    const double valeur = (table.*vers)(entrée);
    if (std::isfinite(valeur)) valeurSaisie_ = AffichageCourt(valeur);
  } catch (const Echec&) {
    // A table that gives no value in this direction.
  }
}

void FeuilleEtalonnage::Ouvre(FenêtreHôte* mère, const std::function<void()>& montre) {
  propriétairePrécédent_ =
      std::exchange(propriétaire_, mère != nullptr ? mère->Suivie() : std::weak_ptr<FenêtreHôte>());
  visible_ = true;
  try {
    montre();
  } catch (...) {
    Ferme();
    throw;
  }
}

void FeuilleEtalonnage::Ferme() noexcept {
  if (!visible_) return;
  propriétaire_ = propriétairePrécédent_;
  visible_ = false;
}

void FeuilleEtalonnage::RemplitLaGrille(const Points& points) {
  text1Sur_.reset();
  remplis_ = points;
  for (int colonne = 0; colonne < kColonnes; ++colonne) {
    cellules_[Rang({0, colonne})].texte =
        Légende(modèle_.entêtes[static_cast<std::size_t>(colonne)]);
    for (int rangée = 1; rangée < kRangées; ++rangée) {
      const Point& point = points[static_cast<std::size_t>(rangée - 1)];
      const double nombre = colonne == modèle_.unités ? point.unités : point.points;
      cellules_[Rang({rangée, colonne})] = {TexteDeNombre(nombre), nombre};
    }
  }
}

FeuilleEtalonnage::Points FeuilleEtalonnage::PointsSaisis() const {
  const auto nombre = [&](int rangée, bool unités) {
    if (const std::optional<double> saisi = NombreSaisi(rangée, unités)) return *saisi;
    const std::string& texte = Cellule({rangée, unités ? modèle_.unités : 1 - modèle_.unités});
    const Valeur valeur = SansBlancs(texte).empty() ? Valeur(Nul{}) : Valeur(texte);
    return colonnes::EnNommant(ColonneDuPoint(rangée, unités), [&] { return VersDouble(valeur); });
  };
  Points points;
  for (int rangée = 1; rangée < kRangées; ++rangée) {
    points[static_cast<std::size_t>(rangée - 1)] = {nombre(rangée, true), nombre(rangée, false)};
  }
  return points;
}

bool FeuilleEtalonnage::TrouveLaLigne(const Objet& objet, Recordset& ligne) {
  ligne.MoveFirst();
  if (VersTexte(LitChamp(ligne, "Index")) == objet.Key()) return true;
  objet.Montre("Error during data backup");
  Ferme();
  return false;
}

void FeuilleEtalonnage::EcritLesPoints(Recordset& ligne, const Points& points,
                                       Valeur (*enValeur)(double)) const {
  for (int rangée = 1; rangée < kRangées; ++rangée) {
    const auto rang = static_cast<std::size_t>(rangée - 1);
    const auto écrit = [&](double Point::* quoi, bool unités) {
      if (points[rang].*quoi == remplis_[rang].*quoi) return;
      ligne.Ecrit(ColonneDuPoint(rangée, unités), enValeur(points[rang].*quoi));
    };
    écrit(&Point::points, false);
    écrit(&Point::unités, true);
  }
}

}  // namespace zuma
