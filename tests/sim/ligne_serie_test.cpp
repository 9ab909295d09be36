// Faults of a simulated line that keep its bytes whole: late ones, and the same ones again.
#include "sim/ligne_serie.h"

#include <gtest/gtest.h>

namespace zuma::sim {
namespace {

struct Appareil : AppareilSérie {
  void Reçoit(std::string_view, std::int32_t) override {}
  Octets Emet() override { return std::exchange(émis, {}); }
  Octets émis;
};

TEST(LigneSérie, RetardeOuRépète) {
  const auto appareil = Crée<Appareil>();
  LigneSérie ligne;
  ligne.appareil = appareil;
  const auto relève = [&](double secondes, const char* émis) {
    ligne.secondes = secondes;
    appareil->émis = émis;
    return ligne.Relève();
  };
  EXPECT_EQ(relève(0, "a"), "a");
  ligne.pannes.tardive = true;
  EXPECT_EQ(relève(1, "b"), "");
  EXPECT_EQ(relève(1.2, "c"), "");
  EXPECT_EQ(relève(1 + kRetard, ""), "b");
  ligne.pannes.tardive = false;
  EXPECT_EQ(relève(1.5, "d"), "cd") << "what was on its way comes at once";

  ligne.pannes.figée = true;
  EXPECT_EQ(relève(2, "e"), "e");
  EXPECT_EQ(relève(3, "f"), "e");
  EXPECT_EQ(relève(4, ""), "") << "a question that is not asked has no answer";
  ligne.pannes.figée = false;
  EXPECT_EQ(relève(5, "g"), "g");
}

}  // namespace
}  // namespace zuma::sim
