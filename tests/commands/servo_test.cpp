// Servo-valve compensation and dither, as arithmetic.
#include "commands/servo.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "commands/dither.h"

namespace zuma {
namespace {

TEST(LeCoefficientServo, SuitLesPressions) {
  const struct {
    double unités;
    std::optional<double> alimentation;
    std::optional<double> utilisation;
    double coefficient;
    double Putil;
  } cas[] = {
      {1, std::nullopt, 80, 1, 0},
      {1, 100, 50, 1, 50},
      {-1, 100, 50, 1, 50},
      {1, 100, std::nullopt, std::sqrt(0.5), 0},
      {1, 100, 0, std::sqrt(0.5), 0},
      {0, 100, 0, 10, 0},
      {-1, 100, -5, 10, 0},
      {1, 100, 100, 10, 100},
      {1, 100, 120, 10, 120},
      {1, 100, 99.9, 10, 99.9},  // 22.4 before the bound
      {1, 100, 99, 1 / std::sqrt(0.02), 99},
      {-1, 100, 99, 1 / std::sqrt(1.98), 99},
      {-1, 100, 100, std::sqrt(0.5), 100},
      {-1, 100, 110, 0.7, 110},
      {1, 0, 50, 1, 50},
      {-1, 0, 0, 1, 0},
      {1, -3, 50, 1, 50},
  };
  for (const auto& c : cas) {
    const auto rendu = servo::CalculeCoefServo(c.unités, {c.alimentation, c.utilisation});
    EXPECT_DOUBLE_EQ(rendu.coefficient, c.coefficient) << &c - cas;
    EXPECT_EQ(rendu.Putil, c.Putil) << &c - cas;
  }
  EXPECT_TRUE(std::isnan(servo::CalculeCoefServo(1, {NAN, 50}).coefficient));
}

TEST(LeJournalServo, ALesColonnesDeSonEntête) {
  const servo::Relevé relevé{-5, {.coefficient = 0.75, .Palim = 100, .Putil = 30}, 5, 1.25, 4096.5};
  EXPECT_EQ(servo::LigneDuJournal(relevé), "-5;100;30;-1;0,75;5;1,25;4096,5;");
  const std::string ligne = servo::LigneDuJournal(relevé, '.');
  EXPECT_EQ(std::ranges::count(ligne, ';') - 1, std::ranges::count(servo::kEntêteDuJournal, ';'));
}

TEST(LAmplitudeDuDither, TientEntreLesLimites) {
  const struct {
    double base;
    double amplitude;
    double utilisable;
  } cas[] = {{50, 10, 10}, {97, 10, 6}, {2, 10, 4}, {100, 10, 0}, {95, 10, 10}, {50, 300, 100}};
  for (const auto& c : cas) {
    EXPECT_DOUBLE_EQ(AmplitudeUtilisable(c.base, c.amplitude, 0, 100), c.utilisable) << c.base;
  }
}

// Toggle times with refreshes every millisecond: 10 Hz, half period 50 ms.
std::vector<int> Bascules(void (Dither::*planifie)(double, double) noexcept, int premierPassage) {
  Dither dither;
  dither.Recale(0);
  std::vector<int> fronts;
  for (int ms = premierPassage; ms < 400; ++ms) {
    const double t = ms / 1000.0;
    if (!dither.EstDû(t)) continue;
    fronts.push_back(ms);
    (dither.*planifie)(t, 10);
  }
  return fronts;
}

TEST(LHoraireDuDither, CompteLeRetardDUneCommandeNormale) {
  // First toggle at 1 ms: lateness 1 - 0 - 0 - 50 = -49, next after 1 + 50 - 49 = 2 ms; there the
  // lateness is 3 - 1 + 49 - 50 = 1, next after 3 + 51 = 54; then 55 - 3 - 1 - 50 = 1, and so on.
  EXPECT_EQ(Bascules(&Dither::PlanifieAvecRetard, 1),
            (std::vector{1, 3, 55, 107, 159, 211, 263, 315, 367}));
  EXPECT_EQ(Bascules(&Dither::Planifie, 1), (std::vector{1, 52, 103, 154, 205, 256, 307, 358}));
  Dither pressé;
  pressé.Recale(1000);
  EXPECT_FALSE(pressé.EstDû(1000));
  pressé.Presse();
  EXPECT_TRUE(pressé.EstDû(-1000));
}

}  // namespace
}  // namespace zuma
