#include "base/table_etalonnage.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "outils/cas.h"
#include "outils/numero.h"

namespace zuma {
namespace {

using essai::Cas;
using essai::NuméroDe;
using Rangées = Cas<double, double>;  // units and points

TableEtalonnage Table(const Rangées& rangées) {
  TableEtalonnage table;
  std::int16_t i = 0;
  for (const auto& [unités, points] : rangées) {
    table.PointX(++i, unités);
    table.PointY(i, points);
  }
  return table;
}

TEST(UneTableDEtalonnage, InterpoleDansLesDeuxSens) {
  const Rangées courbe{{0, 0}, {10, 100}, {40, 200}};
  for (const auto& [quoi, rangées, points, unités] : Cas<const char*, Rangées, double, double>{
           {"aucun point : identité", {}, 123.5, 123.5},
           {"un point : droite par l'origine", {{50, 200}}, -400, -100},
           {"sur un point", courbe, 100, 10},
           {"premier segment", courbe, 25, 2.5},
           {"au-delà du dernier", courbe, 300, 70},
           {"en deçà du premier", courbe, -50, -5},
           {"en désordre", {{40, 200}, {0, 0}, {10, 100}}, 150, 25},
           {"pente négative", {{10, -100}, {-10, 100}}, 50, -5},
           {"une rangée nulle avant la dernière", {{-5, -50}, {0, 0}, {20, 100}}, 50, 10},
           {"une dernière rangée d'unité nulle", {{20, 100}, {0, 50}}, 75, 10},
           {"sans passer par zéro", {{4, 1000}, {20, 2000}}, 0, -12},
           {"descendante jusqu'à (0, 0)", {{100, 1000}, {50, 520}, {0, 0}}, 0, 0},
           {"au-delà de ce (0, 0)", {{100, 1000}, {50, 520}, {0, 0}}, -52, -5},
           {"montante jusqu'à (0, 0)", {{-100, -1000}, {-50, -520}, {0, 0}}, -52, -5},
           {"les points n'y vont pas", {{100, 100}, {50, 600}, {0, 0}}, 0, 110},
           {"en désordre avec un zéro décalé", {{0, 100}, {100, 1100}, {50, 600}}, 0, -10},
           {"bipolaire", {{-100, -1000}, {-50, -500}, {50, 500}}, 700, 70}}) {
    EXPECT_DOUBLE_EQ(Table(rangées).VersUnités(points), unités) << quoi;
    EXPECT_DOUBLE_EQ(Table(rangées).VersPoints(unités), points) << quoi;
    EXPECT_TRUE(std::isnan(Table(rangées).VersUnités(std::nan("")))) << quoi;
    EXPECT_TRUE(std::isnan(Table(rangées).VersPoints(-std::nan("")))) << quoi;
  }
}

TEST(UneTableDEtalonnage, PasseLesSegmentsDeLargeurNulle) {
  for (const Rangées& rangées : {Rangées{{0, 0}, {10, 100}, {20, 100}, {30, 200}},
                                 Rangées{{30, 200}, {20, 100}, {10, 100}, {0, 0}}}) {
    const TableEtalonnage marche = Table(rangées);
    EXPECT_DOUBLE_EQ(marche.VersUnités(50), 5);
    EXPECT_DOUBLE_EQ(marche.VersUnités(100), 10);
    EXPECT_DOUBLE_EQ(marche.VersUnités(150), 25);
    EXPECT_DOUBLE_EQ(marche.VersPoints(15), 100);
  }
  // The last segment that has a width goes on.
  EXPECT_DOUBLE_EQ(Table({{0, 0}, {10, 100}, {20, 100}}).VersUnités(200), 20);
  for (const Rangées& sansLargeur :
       {Rangées{{5, 100}, {9, 100}}, Rangées{{9, 100}, {5, 100}}, Rangées{{5, 0}}}) {
    EXPECT_EQ(NuméroDe([&] { (void)Table(sansLargeur).VersUnités(100); }), 11);
  }
  EXPECT_DOUBLE_EQ(Table({{5, 100}, {9, 100}}).VersPoints(7), 100);
}

TEST(UneTableDEtalonnage, A20LignesEtIgnoreLa0) {
  TableEtalonnage table;
  for (const std::int16_t indice : {std::int16_t{-1}, std::int16_t{21}}) {
    EXPECT_EQ(NuméroDe([&] { table.PointX(indice, 1); }), 9);
    EXPECT_EQ(NuméroDe([&] { (void)table.PointY(indice); }), 9);
  }
  table.PointX(0, 7);
  EXPECT_EQ(table.PointX(0), 7);
  EXPECT_EQ(table.VersUnités(3), 3);
  Rangées parabole;
  for (int i = 0; i < 20; ++i) parabole.emplace_back(i * i, 10 * i);
  table = Table(parabole);
  for (int i = 0; i < 20; ++i) EXPECT_DOUBLE_EQ(table.VersUnités(10.0 * i), i * i);
  EXPECT_DOUBLE_EQ(table.VersUnités(195), 379.5);
  table.PointY(7, std::nan(""));
  EXPECT_DOUBLE_EQ(table.VersUnités(0), 0) << "what is no number must still sort";
}

}  // namespace
}  // namespace zuma
