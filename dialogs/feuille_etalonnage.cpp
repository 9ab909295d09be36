#include "dialogs/feuille_etalonnage.h"

#include <utility>

#include "core/colonnes.h"
#include "core/objet.h"
#include "core/outils_communs.h"

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
  return cellules_[Rang(où)];
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
  if (text1Sur_) cellules_[Rang(*text1Sur_)] = text1_;
  text1Sur_.reset();
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
  for (int colonne = 0; colonne < kColonnes; ++colonne) {
    cellules_[Rang({0, colonne})] = Légende(modèle_.entêtes[static_cast<std::size_t>(colonne)]);
    for (int rangée = 1; rangée < kRangées; ++rangée) {
      const Point& point = points[static_cast<std::size_t>(rangée - 1)];
      cellules_[Rang({rangée, colonne})] =
          TexteDeNombre(colonne == modèle_.unités ? point.unités : point.points);
    }
  }
}

FeuilleEtalonnage::Points FeuilleEtalonnage::PointsSaisis() const {
  const auto nombre = [&](int rangée, bool unités) {
    const int colonne = unités ? modèle_.unités : 1 - modèle_.unités;
    const std::string& texte = Cellule({rangée, colonne});
    const Valeur valeur = SansBlancs(texte).empty() ? Valeur(Nul{}) : Valeur(texte);
    return colonnes::EnNommant(ColonneDuPoint(rangée, unités), [&] { return VersDouble(valeur); });
  };
  Points points;
  for (int rangée = 1; rangée < kRangées; ++rangée) {
    points[static_cast<std::size_t>(rangée - 1)] = {nombre(rangée, true), nombre(rangée, false)};
  }
  return points;
}

bool FeuilleEtalonnage::OuvreLaLigne(const Objet& objet, Recordset& ligne) {
  ligne.MoveFirst();
  if (VersTexte(LitChamp(ligne, "Index")) != objet.Key()) {
    objet.Montre("Error during data backup");
    Ferme();
    return false;
  }
  ligne.Edit();
  return true;
}

void FeuilleEtalonnage::EcritLesPoints(Recordset& ligne, const Points& points,
                                       Valeur (*enValeur)(double)) {
  for (int rangée = 1; rangée < kRangées; ++rangée) {
    const Point& point = points[static_cast<std::size_t>(rangée - 1)];
    ligne.Ecrit(ColonneDuPoint(rangée, false), enValeur(point.points));
    ligne.Ecrit(ColonneDuPoint(rangée, true), enValeur(point.unités));
  }
}

}  // namespace zuma
