#include "sensors/regression.h"

#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "core/echec.h"

namespace zuma {
namespace {

class UnePente : public testing::Test {
 protected:
  std::optional<double> Avec(double t, double v, double n) { return régression->Ajoute(t, v, n); }
  std::unique_ptr<Régression> régression = std::make_unique<Régression>();
};

// The timer of a machine that has run for a month, a ramp of 7 then of 3 units per second.
TEST_F(UnePente, OublieCeQuiEstSortiEtRestePréciseAprèsUnMois) {
  constexpr double kMois = 30 * 86400;
  double pente = 0;
  for (int i = 0; i < 20000; ++i) {
    const double t = i * 0.005;
    pente = Avec(kMois + t, i < 1000 ? 7 * t : 3 * t + 20, 50).value_or(pente);
  }
  EXPECT_NEAR(pente, 3, 1e-6);
}

TEST_F(UnePente, CompteDesZérosTantQueLaSuiteNEstPasPleine) {
  // One sample at (2, 10) and three zeros: (4*20 - 10*2) / (4*4 - 2*2).
  EXPECT_DOUBLE_EQ(*Avec(2, 10, 4), 5);
  EXPECT_DOUBLE_EQ(*Avec(3, 11, 4), (4 * 53 - 21 * 5) / (4 * 13.0 - 5 * 5));
  (void)Avec(5, 16, 4);
  EXPECT_DOUBLE_EQ(*Avec(6, 17, 4), (4 * 235 - 54 * 16) / (4 * 74.0 - 16 * 16));
}

TEST_F(UnePente, NeGardePasUnEchantillonSansPente) {
  EXPECT_FALSE(Avec(5, 1, 1));  // a run of one has no slope
  EXPECT_TRUE(std::isnan(*Avec(1, std::nan(""), 4)));
  EXPECT_DOUBLE_EQ(*Avec(2, 10, 4), 5);  // nothing is left of them
}

// Whatever the sums have kept of the samples before.
TEST_F(UnePente, TientUnRunDeDeuxAuMêmeInstant) {
  for (int i = 0; i < 1000; ++i) {
    const double t = 1e6 + i * 0.1;
    (void)Avec(t, i, 2);
    EXPECT_FALSE(Avec(t, i + 5, 2)) << i;
    EXPECT_FALSE(Avec(t, std::nan(""), 2)) << i;
  }
  EXPECT_NEAR(*Avec(1e6 + 100, 1000, 2), 10, 1e-6);
}

TEST_F(UnePente, EchoueAuDelàDe5000) {
  for (int i = 1; i <= 5000; ++i) (void)Avec(i, i, 6000);
  EXPECT_THROW((void)Avec(5001, 1, 6000), Echec);
}

}  // namespace
}  // namespace zuma
