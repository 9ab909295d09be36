#include "sensors/regression.h"

#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "core/echec.h"

namespace zuma {
namespace {

// NIST Statistical Reference Datasets, linear regression, "Norris": certified slope.
TEST(UnePente, EstCelleDuJeuNorris) {
  constexpr double kYX[][2] = {{0.1, 0.2},     {338.8, 337.4}, {118.1, 118.2}, {888.0, 884.6},
                               {9.2, 10.1},    {228.1, 226.5}, {668.5, 666.3}, {998.5, 996.3},
                               {449.1, 448.6}, {778.9, 777.0}, {559.2, 558.2}, {0.3, 0.4},
                               {0.1, 0.6},     {778.1, 775.5}, {668.8, 666.9}, {339.3, 338.0},
                               {448.9, 447.5}, {10.8, 11.6},   {557.7, 556.0}, {228.3, 228.1},
                               {998.0, 995.8}, {888.8, 887.6}, {119.6, 120.2}, {0.3, 0.3},
                               {0.6, 0.3},     {557.6, 556.8}, {339.3, 339.1}, {888.0, 887.2},
                               {998.5, 999.0}, {778.9, 779.0}, {10.2, 11.1},   {117.6, 118.3},
                               {228.9, 229.2}, {668.4, 669.1}, {449.2, 448.9}, {0.2, 0.5}};
  const auto régression = std::make_unique<Régression>();
  double pente = 0;
  for (const auto& [y, x] : kYX) pente = régression->Ajoute(x, y, 36).value_or(pente);
  EXPECT_NEAR(pente, 1.00211681802045, 1e-12);
}

// The timer of a machine that has run for a month, a ramp of 7 then of 3 units per second.
TEST(UnePente, OublieCeQuiEstSortiEtRestePréciseAprèsUnMois) {
  const auto régression = std::make_unique<Régression>();
  constexpr double kMois = 30 * 86400;
  double pente = 0;
  for (int i = 0; i < 20000; ++i) {
    const double t = i * 0.005;
    const double v = i < 1000 ? 7 * t : 3 * t + 20;
    pente = régression->Ajoute(kMois + t, v, 50).value_or(pente);
  }
  EXPECT_NEAR(pente, 3, 1e-6);
}

TEST(UnePente, CompteDesZérosTantQueLaSuiteNEstPasPleine) {
  const auto régression = std::make_unique<Régression>();
  // One sample at (2, 10) and three zeros: (4*20 - 10*2) / (4*4 - 2*2).
  EXPECT_DOUBLE_EQ(*régression->Ajoute(2, 10, 4), 5);
}

TEST(UnePente, NeGardePasUnEchantillonSansPente) {
  const auto régression = std::make_unique<Régression>();
  EXPECT_FALSE(régression->Ajoute(5, 1, 1));  // a run of one has no slope
  EXPECT_FALSE(régression->Ajoute(6, 2, 1));
  EXPECT_TRUE(std::isnan(*régression->Ajoute(1, std::nan(""), 4)));
  EXPECT_DOUBLE_EQ(*régression->Ajoute(2, 10, 4), 5);  // nothing is left of them
}

TEST(UnePente, EchoueAuDelàDe5000) {
  const auto régression = std::make_unique<Régression>();
  for (int i = 1; i <= 5000; ++i) (void)régression->Ajoute(i, i, 6000);
  EXPECT_THROW((void)régression->Ajoute(5001, 1, 6000), Echec);
}

}  // namespace
}  // namespace zuma
