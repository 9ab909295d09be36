#include "core/table_etalonnage.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "core/echec.h"

namespace zuma {
namespace {

struct Rangée {
  double unités;
  double points;
};

TableEtalonnage Table(const std::vector<Rangée>& rangées) {
  TableEtalonnage table;
  std::int16_t i = 0;
  for (const Rangée& rangée : rangées) {
    table.PointX(++i, rangée.unités);
    table.PointY(i, rangée.points);
  }
  return table;
}

TEST(UneTableDEtalonnage, InterpoleDansLesDeuxSens) {
  const std::vector<Rangée> courbe{{0, 0}, {10, 100}, {40, 200}};
  const struct {
    const char* quoi;
    std::vector<Rangée> rangées;
    double points;
    double unités;
  } cas[] = {
      {"aucun point : identité", {}, 123.5, 123.5},
      {"un point : droite par l'origine", {{50, 200}}, 100, 25},
      {"un point : au-delà", {{50, 200}}, -400, -100},
      {"sur un point", courbe, 100, 10},
      {"premier segment", courbe, 25, 2.5},
      {"second segment", courbe, 150, 25},
      {"au-delà du dernier", courbe, 300, 70},
      {"en deçà du premier", courbe, -50, -5},
      {"en désordre", {{40, 200}, {0, 0}, {10, 100}}, 150, 25},
      {"pente négative", {{10, -100}, {-10, 100}}, 50, -5},
      {"une rangée nulle avant la dernière compte", {{-5, -50}, {0, 0}, {20, 100}}, 50, 10},
      {"sans passer par zéro", {{4, 1000}, {20, 2000}}, 0, -12},
  };
  for (const auto& c : cas) {
    const TableEtalonnage table = Table(c.rangées);
    EXPECT_DOUBLE_EQ(table.VersUnités(c.points), c.unités) << c.quoi;
    EXPECT_DOUBLE_EQ(table.VersPoints(c.unités), c.points) << c.quoi;
  }
}

TEST(UneTableDEtalonnage, PasseLesSegmentsDeLargeurNulle) {
  const TableEtalonnage marche = Table({{0, 0}, {10, 100}, {20, 100}, {30, 200}});
  EXPECT_DOUBLE_EQ(marche.VersUnités(100), 10);
  EXPECT_DOUBLE_EQ(marche.VersUnités(150), 25);
  EXPECT_DOUBLE_EQ(marche.VersPoints(15), 100);
  const TableEtalonnage bout = Table({{0, 0}, {10, 100}, {20, 100}});
  EXPECT_DOUBLE_EQ(bout.VersUnités(200), 20);  // the last segment that has a width goes on
}

TEST(UneTableDEtalonnage, EchoueQuandUnSensNAPasDeValeur) {
  EXPECT_THROW((void)Table({{5, 100}, {9, 100}}).VersUnités(100), Echec);
  EXPECT_THROW((void)Table({{5, 0}}).VersUnités(1), Echec);
  EXPECT_DOUBLE_EQ(Table({{5, 100}, {9, 100}}).VersPoints(7), 100);
}

TEST(UneTableDEtalonnage, NAPasDeLigneHorsDe0à20EtIgnoreLa0) {
  TableEtalonnage table;
  for (const std::int16_t indice : {std::int16_t{-1}, std::int16_t{21}}) {
    EXPECT_THROW(table.PointX(indice, 1), Echec);
    EXPECT_THROW((void)table.PointY(indice), Echec);
  }
  table.PointX(0, 7);
  EXPECT_EQ(table.PointX(0), 7);
  EXPECT_EQ(table.VersUnités(3), 3);
}

TEST(UneTableDEtalonnage, Utilise20PointsEtSurvitàUnNonNombre) {
  std::vector<Rangée> parabole;
  for (int i = 0; i < 20; ++i) parabole.push_back({1.0 * i * i, 10.0 * i});
  TableEtalonnage table = Table(parabole);
  for (int i = 0; i < 20; ++i) EXPECT_DOUBLE_EQ(table.VersUnités(10.0 * i), 1.0 * i * i);
  EXPECT_DOUBLE_EQ(table.VersUnités(195), 379.5);
  table.PointY(7, std::numeric_limits<double>::quiet_NaN());
  EXPECT_DOUBLE_EQ(table.VersUnités(0), 0);
}

}  // namespace
}  // namespace zuma
