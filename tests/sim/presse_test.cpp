// The simulated press against what its equations give on paper.
#include "sim/presse.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "outils/cas.h"

namespace zuma {
namespace {

constexpr double kDépart = 0.04;       // metres
constexpr double kPression = 21e6;     // of the pump, pascals
constexpr double kRepos = 0.5e6;       // in the use chamber, pascals
constexpr double kEprouvette = 4.9e8;  // newtons a metre
constexpr double kBâti = 2e7;

double EnSérie(double a, double b) {
  return 1 / (1 / a + 1 / b);
}

// At full pressure, valve shut.
sim::Presse Prête(sim::RéglagesPresse réglages = {}) {
  sim::Presse presse(réglages);
  presse.pompe = true;
  presse.distributeur = true;
  presse.Avance(15);
  return presse;
}

// The same, pressing on the specimen with `force`.
sim::Presse SousCharge(double force) {
  sim::Presse presse = Prête();
  presse.servovalve = 0.2;
  while (presse.Force() < force) presse.Avance(0.001);
  presse.servovalve = 0;
  presse.Avance(0.1);
  return presse;
}

TEST(LaPresse, VaDansLeSensDeLaServovalve) {
  const auto racine = [](double chute) { return std::sqrt(chute / kPression); };
  const double montée = 0.01 * racine(kPression - kRepos);
  for (const auto& [ouverture, vitesse] :  // metres a second, without load
       essai::Cas<double, double>{{0.5, 0.49 * montée},
                                  {-0.5, -0.01 * 0.49 * racine(kRepos)},
                                  {1, 0.99 * montée},
                                  {7, 0.99 * montée},  // no wider than open
                                  {0, 0},
                                  {0.0099, 0},  // in the dead band
                                  {-0.0099, 0}}) {
    sim::Presse presse = Prête();
    EXPECT_EQ(presse.Position(), kDépart);
    presse.servovalve = ouverture;
    presse.Avance(0.2);  // the spool has arrived
    const double départ = presse.Position();
    presse.Avance(0.5);
    EXPECT_NEAR(presse.Position() - départ, 0.5 * vitesse, 1e-9) << ouverture;
    EXPECT_EQ(presse.Force(), 0) << "no contact yet";
  }
}

TEST(LaPresse, ChargeLEprouvetteEtLeBâtiEnSérieEtCasseUneFois) {
  constexpr double kRupture = 33'000;
  sim::Presse presse = Prête({.rupture = kRupture});
  presse.servovalve = 0.5;
  double force = 0;
  int chargés = 0;
  while (!presse.Cassée()) {
    force = presse.Force();
    const double écrasement = std::max(0.0, presse.Position() - 0.05);
    EXPECT_NEAR(force, écrasement * EnSérie(kEprouvette, kBâti), 1e-6);
    EXPECT_NEAR(presse.Raccourcissement() + force / kBâti, écrasement, 1e-12);
    EXPECT_NEAR(presse.PressionUtilisation(), kRepos + force / 0.01, 1e-3);
    chargés += force > 0 ? 1 : 0;
    presse.Avance(0.0005);
    ASSERT_LT(presse.Position(), 0.06);
  }
  EXPECT_GT(chargés, 500);
  EXPECT_LT(force, kRupture);
  EXPECT_NEAR(force, kRupture, 60) << "at most one step away";
  const double reste = EnSérie(0.03 * kEprouvette, kBâti);
  EXPECT_NEAR(presse.Force(), kRupture * reste / EnSérie(kEprouvette, kBâti), 60);
  // The pieces go on like a softer specimen, beyond that force too.
  while (presse.Force() < 1.5 * kRupture) {
    force = presse.Force();
    presse.Avance(0.01);
    ASSERT_GT(presse.Force(), force);
    ASSERT_NEAR(presse.Force(), (presse.Position() - 0.05) * reste, 1e-6);
  }
  presse.ChangeEprouvette();
  presse.Avance(0.0005);
  EXPECT_TRUE(presse.Cassée()) << "the new one is crushed at once";
}

TEST(LaPresse, NeBougePasSansHuile) {
  const auto chaîne = [](sim::Presse& p) { p.chaîneFermée = false; };
  const auto porte = [](sim::Presse& p) { p.porteFermée = false; };
  const auto bouton = [](sim::Presse& p) { p.boutonAU = true; };
  const auto distributeur = [](sim::Presse& p) { p.distributeur = false; };
  // The leak alone lets the load down: x' = -leak k x / area.
  const double fuite = std::exp(-1e-12 * EnSérie(kEprouvette, kBâti) * 10 / 0.01);
  for (void (*coupe)(sim::Presse&) :
       std::initializer_list<void (*)(sim::Presse&)>{chaîne, porte, bouton, distributeur}) {
    for (const double ouverture : {1.0, -1.0}) {
      sim::Presse libre = Prête();
      sim::Presse chargée = SousCharge(20'000);
      const double force = chargée.Force();
      for (sim::Presse* presse : {&libre, &chargée}) {
        coupe(*presse);
        presse->servovalve = ouverture;
        presse->Avance(10);
      }
      EXPECT_EQ(libre.Position(), kDépart);
      EXPECT_NEAR(chargée.Force(), force * fuite, 1);
    }
  }
  sim::Presse sansPompe;
  sansPompe.distributeur = true;
  sansPompe.servovalve = 1;
  sansPompe.Avance(10);
  EXPECT_EQ(sansPompe.Position(), kDépart);
}

TEST(LaPresse, SArrêteÀSesButéesEtÀLaForceDeSaPompe) {
  sim::Presse presse = Prête({.contact = 1});  // nothing on the table
  presse.servovalve = 1;
  presse.Avance(30);
  EXPECT_EQ(presse.Position(), 0.2);
  EXPECT_TRUE(presse.FinDeCourseHaut());
  EXPECT_FALSE(presse.FinDeCourseBas());
  presse.servovalve = -1;
  presse.Avance(1);
  EXPECT_FALSE(presse.FinDeCourseHaut());
  presse.Avance(150);
  EXPECT_EQ(presse.Position(), 0);
  EXPECT_TRUE(presse.FinDeCourseBas());

  sim::Presse dure = Prête({.rupture = 1e9});
  dure.servovalve = 1;
  dure.Avance(60);
  EXPECT_NEAR(dure.Force(), (kPression - kRepos) * 0.01, 500);
  EXPECT_FALSE(dure.Cassée());
}

}  // namespace
}  // namespace zuma
