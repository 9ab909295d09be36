// Servo-valve compensation and dither, as arithmetic.
#include "commands/servo.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "commands/dither.h"
#include "outils/cas.h"

namespace zuma {
namespace {

using essai::Cas;

TEST(LeCoefficientServo, SuitLesPressions) {
  constexpr std::nullopt_t kSans = std::nullopt;
  using Pression = std::optional<double>;
  const Cas<double, Pression, Pression, double, double> cas{{1, kSans, 80, 1, 0},
                                                            {1, 100, 50, 1, 50},
                                                            {1, 100, kSans, std::sqrt(0.5), 0},
                                                            {0, 100, 0, 10, 0},
                                                            {-1, 100, -5, 10, 0},
                                                            {1, 100, 100, 10, 100},
                                                            {1, 100, 120, 10, 120},
                                                            {1, 100, 99.9, 10, 99.9},
                                                            {1, 100, 99, 1 / std::sqrt(0.02), 99},
                                                            {-1, 100, 99, 1 / std::sqrt(1.98), 99},
                                                            {-1, 100, 110, 0.7, 110},
                                                            {1, 0, 50, 1, 50},
                                                            {-1, 0, 0, 1, 0},
                                                            {1, -3, 50, 1, 50}};
  for (const auto& [unités, alimentation, utilisation, coefficient, Putil] : cas) {
    const auto rendu = servo::CalculeCoefServo(unités, {alimentation, utilisation});
    EXPECT_DOUBLE_EQ(rendu.coefficient, coefficient) << unités << " " << Putil;
    EXPECT_EQ(rendu.Putil, Putil);
  }
  EXPECT_TRUE(std::isnan(servo::CalculeCoefServo(1, {NAN, 50}).coefficient));
}

TEST(LeJournalServo, ALesColonnesDeSonEntête) {
  const servo::Relevé relevé{-5, {.coefficient = 0.75, .Palim = 100, .Putil = 30}, 5, 1.25, 4096.5};
  EXPECT_EQ(servo::LigneDuJournal(relevé), "-5;100;30;-1;0,75;5;1,25;4096,5;");
  EXPECT_EQ(std::ranges::count(servo::kEntêteDuJournal, ';') + 1, 8);
}

TEST(LAmplitudeDuDither, TientEntreLesLimites) {
  for (const auto& [base, amplitude, utilisable] : Cas<double, double, double>{
           {50, 10, 10}, {97, 10, 6}, {2, 10, 4}, {100, 10, 0}, {95, 10, 10}}) {
    EXPECT_DOUBLE_EQ(AmplitudeUtilisable(base, amplitude, 0, 100), utilisable) << base;
  }
}

// Toggle times in milliseconds, with refreshes every one of them: 10 Hz, half period 50 ms.
std::vector<int> Bascules(void (Dither::*planifie)(double, double) noexcept) {
  Dither dither;
  dither.Recale(0);
  std::vector<int> fronts;
  for (int ms = 1; ms < 220; ++ms) {
    if (!dither.EstDû(ms / 1000.0, 10)) continue;
    fronts.push_back(ms);
    (dither.*planifie)(ms / 1000.0, 10);
  }
  return fronts;
}

TEST(LHoraireDuDither, CompteLeRetardDUneCommandeNormale) {
  // First toggle at 1 ms: lateness 1 - 0 - 0 - 50 = -49, next after 1 + 50 - 49 = 2 ms; there the
  // lateness is 3 - 1 + 49 - 50 = 1, next after 3 + 51 = 54; then 55 - 3 - 1 - 50 = 1, and so on.
  EXPECT_EQ(Bascules(&Dither::PlanifieAvecRetard), (std::vector{1, 3, 55, 107, 159, 211}));
  EXPECT_EQ(Bascules(&Dither::Planifie), (std::vector{1, 52, 103, 154, 205}));
}

}  // namespace
}  // namespace zuma
