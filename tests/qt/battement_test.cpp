// The heart beat of the desktop window, and what the window keeps of a sensor for its curve.
#include "host/desktop/battement.h"

#include <QDialog>
#include <QEventLoop>
#include <QMenu>
#include <QTest>
#include <stdexcept>

#include <gtest/gtest.h>

#include "host/desktop/historique.h"

namespace zuma {
namespace {

using host::Battement;
using host::Historique;

void Boucle(int millisecondes) {
  QEventLoop boucle;
  QTimer::singleShot(millisecondes, &boucle, [&] { boucle.quit(); });
  boucle.exec();
}

TEST(LeBattement, NEstJamaisRepris) {
  int profondeur = 0, plusProfond = 0, passes = 0;
  Battement battement({.avance = [](double secondes) { return secondes; },
                       .passe =
                           [&] {
                             plusProfond = std::max(plusProfond, ++profondeur);
                             Boucle(10);  // a form of the library opens an event loop
                             ++passes;
                             --profondeur;
                           },
                       .ensuite = [](double) {},
                       .échec = [](std::string_view) {}});
  battement.Démarre();
  EXPECT_TRUE(QTest::qWaitFor([&] { return passes > 3; }));
  battement.Arrête();
  EXPECT_EQ(plusProfond, 1);
  EXPECT_GE(battement.LesMesures().plusLonguePasse, 10);
}

TEST(LeBattement, ContinuePendantQuUnDialogueOuUnMenuEstOuvert) {
  int passes = 0, assez = 0;
  QDialog dialogue;
  QMenu menu;
  menu.addAction("-");
  const auto ferme = [&] { dialogue.close(), menu.close(); };
  Battement battement({.avance = [](double secondes) { return secondes; },
                       .passe = [&] { ++passes; },
                       .ensuite =
                           [&](double) {
                             if (passes == assez) QTimer::singleShot(0, ferme);
                           },
                       .échec = [](std::string_view) {}});
  battement.Démarre();
  for (const auto& ouvre : {std::function<void()>([&] { dialogue.exec(); }),
                            std::function<void()>([&] { menu.exec(); })}) {
    assez = passes + 20;
    QTimer sansBattement;
    QObject::connect(&sansBattement, &QTimer::timeout, ferme);
    sansBattement.start(30'000);
    ouvre();
    EXPECT_GE(passes, assez);
  }
}

TEST(LeBattement, SurvitAUnEchecEtLeDit) {
  int passes = 0, vues = 0;
  std::string dit;
  Battement battement({.avance = [](double secondes) { return secondes; },
                       .passe =
                           [&] {
                             if (++passes == 1) throw std::runtime_error("panne");
                           },
                       .ensuite = [&](double) { ++vues; },
                       .échec = [&](std::string_view texte) { dit = texte; }});
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
  const struct {
    double début, fin, maxi;
  } attendus[] = {{-10, -6.1, 10}, {-4.95, -3, 50}, {-1, 0, 10}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(segments[i].first().x(), attendus[i].début, 0.11) << i;
    EXPECT_NEAR(segments[i].last().x(), attendus[i].fin, 0.11) << i;
    double mini = 1e9, maxi = -1e9;
    for (const QPointF& point : segments[i]) {
      mini = std::min(mini, point.y());
      maxi = std::max(maxi, point.y());
    }
    EXPECT_EQ(mini, 10) << i;
    EXPECT_EQ(maxi, attendus[i].maxi) << i;
  }
  EXPECT_TRUE(historique.Segments(100).empty());
}

}  // namespace
}  // namespace zuma
