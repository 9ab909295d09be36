// The heart beat of the desktop window, and what the window keeps of a sensor for its curve.
#include "host/desktop/battement.h"

#include "host/desktop/historique.h"
#include "outils/cas.h"
#include "qt/banc_qt.h"

namespace zuma::essai {
namespace {

using host::Historique;

class LeBattement : public testing::Test {
 protected:
  int passes = 0;
  int vues = 0;
  std::function<void()> passe = [] {};
  std::string dit;
  host::Battement battement{{.avance = [](double secondes) { return secondes; },
                             .passe = [this] { ++passes, passe(); },
                             .ensuite = [this](double) { ++vues; },
                             .échec = [this](std::string_view texte) { dit = texte; }}};
};

TEST_F(LeBattement, NEstJamaisRepris) {
  int profondeur = 0, plusProfond = 0;
  passe = [&] {
    plusProfond = std::max(plusProfond, ++profondeur);
    QTest::qWait(10);  // a form of the library serves events
    --profondeur;
  };
  battement.Démarre();
  EXPECT_TRUE(QTest::qWaitFor([&] { return vues > 3; }));
  battement.Arrête();
  EXPECT_EQ(plusProfond, 1);
  EXPECT_GE(battement.LesMesures().plusLonguePasse, 10);
}

TEST_F(LeBattement, SurvitAUnEchecEtLeDit) {
  passe = [&] {
    if (passes == 1) throw std::runtime_error("panne");
  };
  battement.Démarre();
  EXPECT_TRUE(QTest::qWaitFor([&] { return passes > 2; }));
  EXPECT_EQ(dit, "panne");
  EXPECT_EQ(vues, passes) << "what watches the machine hears of each";
}

TEST(UnHistorique, MontreUnManqueCommeUnTrouEtGardeLesPointes) {
  Historique historique(30);  // cells of 0.1 s
  for (int i = 0; i <= 1000; ++i) {
    const double t = i * 0.01;
    const bool manque = t > 3.995 && t < 5.005;
    const bool silence = t > 7.005 && t < 8.995;
    if (silence) continue;
    historique.Note(t, manque ? std::nullopt : std::optional(i == 600 ? 50.0 : 10.0));
  }
  const auto segments = historique.Segments(10);
  ASSERT_EQ(segments.size(), 3U);
  auto segment = segments.begin();
  for (const auto& [début, fin, maxi] :
       Cas<double, double, double>{{-10, -6.1, 10}, {-4.95, -3, 50}, {-1, 0, 10}}) {
    EXPECT_NEAR(segment->first().x(), début, 0.11);
    EXPECT_NEAR(segment->last().x(), fin, 0.11);
    const auto parY = [](QPointF a, QPointF b) { return a.y() < b.y(); };
    const auto [bas, haut] = std::minmax_element(segment->begin(), segment->end(), parY);
    EXPECT_EQ(bas->y(), 10) << début;
    EXPECT_EQ(haut->y(), maxi) << début;
    ++segment;
  }
  EXPECT_TRUE(historique.Segments(100).empty());
}

}  // namespace
}  // namespace zuma::essai
