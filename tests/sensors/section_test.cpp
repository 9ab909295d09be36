// Sections and stresses against hand-worked figures and the formulas of the test standards.
#include "sensors/section.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "core/echec.h"
#include "sensors/contrainte.h"

namespace zuma {
namespace {

using section::Calcule;
using section::Eprouvette;
using F = ENUM_FORME_EPROUVETTE;
using T = ENUM_TYPE_CONTRAINTE;

TEST(UneSection, SuitLaFormeEtLEssai) {
  const struct {
    const char* quoi;
    Eprouvette e;
    double cm2;
  } cas[] = {
      {"prisme", {.essai = T::Compression, .forme = F::Prisme, .A = 4, .B = 5}, 20},
      {"carré par A", {.essai = T::Traction, .forme = F::Prisme, .A = 4}, 16},
      {"carré par B", {.essai = T::Traction_Compression, .forme = F::Prisme, .B = 5}, 25},
      {"prisme sans côté", {.essai = T::Compression, .forme = F::Prisme}, 0},
      {"prisme en fendage", {.essai = T::Fendage, .forme = F::Prisme, .A = 4, .B = 5, .H = 9}, 0},
      {"cylindre", {.essai = T::Compression, .forme = F::Cylindre, .D = 2}, std::numbers::pi},
      {"cylindre en flexion", {.essai = T::Flexion, .forme = F::Cylindre, .D = 2}, 0},
      {"tube", {.essai = T::Traction, .forme = F::TubeRond, .D = 10, .E = 1}, 28.274333882308138},
      {"tube plein", {.essai = T::Traction, .forme = F::TubeRond, .D = 10, .E = 5}, 0},
      {"hexagone", {.essai = T::Traction, .forme = F::HexagoneRegulier, .A = 2}, 10.39230484541326},
      {"spéciale", {.essai = T::Traction, .forme = F::Speciale, .S = 3.25}, 3.25},
      {"type obsolète", {.essai = T::TractionCompressionCylindre, .forme = F::Cylindre, .D = 2}, 0},
      {"type surface", {.essai = T::surface, .forme = F::Speciale, .S = 3}, 0},
      {"forme inconnue", {.essai = T::Traction, .forme = F::Inconnue, .S = 3}, 0},
      {"en mm",
       {.essai = T::Compression, .forme = F::Prisme, .A = 40, .B = 50, .kLongueur = 0.1},
       20},
      {"S en mm²", {.essai = T::Traction, .forme = F::Speciale, .S = 325, .kLongueur = 0.1}, 3.25},
      // 2 m of wire, 98.75 g, 7900 kg/m3: 6.25 mm².
      {"masse volumique",
       {.méthode = ENUM_TYPE_CALCUL_SURFACE::MasseVolumique,
        .L = 2,
        .masse = 98.75,
        .masseVolumique = 7900,
        .kLongueur = 100},
       0.0625},
      {"sans masse volumique",
       {.méthode = ENUM_TYPE_CALCUL_SURFACE::MasseVolumique, .L = 2, .masse = 98.75},
       0},
  };
  for (const auto& c : cas) EXPECT_NEAR(Calcule(c.e), c.cm2, 1e-12) << c.quoi;
}

// A strip of a thin tube of mean radius R tends to wall times arc length: width 10 mm on a tube of
// 100 mm, wall 0.01 mm. The exact area is the difference of two circular strips, integrated here.
TEST(UneSection, DUnTronconDeTubeEstCelleDeLaBandeEntreLesDeuxCercles) {
  const auto bande = [](double b, double d) {
    constexpr int kPas = 200000;
    double aire = 0;
    for (int i = 0; i < kPas; ++i) {
      const double x = b * ((i + 0.5) / kPas - 0.5);
      aire += std::sqrt(d * d / 4 - x * x) * b / kPas;
    }
    return aire;
  };
  Eprouvette e{.essai = T::Traction, .forme = F::TronconDeTubeRond, .B = 2, .D = 10, .E = 0.5};
  EXPECT_NEAR(Calcule(e), bande(2, 10) - bande(2, 9), 1e-9);
  for (double Eprouvette::* dimension : {&Eprouvette::B, &Eprouvette::D, &Eprouvette::E}) {
    Eprouvette incomplète = e;
    incomplète.*dimension = 0;
    EXPECT_EQ(Calcule(incomplète), 0);
  }
  e.B = 9.5;  // wider than the bore
  EXPECT_EQ(Calcule(e), 0);
  e.E = 5;  // no bore
  EXPECT_EQ(Calcule(e), 0);
}

// EN 12390-5, two-point loading: f = F l / (d1 d2²), supports l = 3 d apart, loads d apart.
// EN 12390-6: f = 2 F / (pi L d). In N and mm.
TEST(UneContrainte, EstCelleDesNormesEnFlexionEtEnFendage) {
  const Eprouvette prisme{.essai = T::Flexion,
                          .forme = F::Prisme,
                          .B = 100,
                          .H = 100,
                          .Grand_L = 300,
                          .Petit_L = 100,
                          .kLongueur = 0.1};
  EXPECT_NEAR(contrainte::DepuisForce(15, Calcule(prisme), {}), 15000.0 * 300 / (100 * 1e4), 1e-9);
  const Eprouvette cylindre{
      .essai = T::Fendage, .forme = F::Cylindre, .D = 150, .H = 300, .kLongueur = 0.1};
  EXPECT_NEAR(contrainte::DepuisForce(200, Calcule(cylindre), {}),
              2 * 200e3 / (std::numbers::pi * 300 * 150), 1e-9);

  Eprouvette partiel = prisme;
  partiel.H = 0;
  EXPECT_NEAR(Calcule(partiel), Calcule(prisme), 1e-12);  // the missing side makes a square
  partiel = prisme;
  partiel.B = 0;
  EXPECT_NEAR(Calcule(partiel), Calcule(prisme), 1e-12);
  partiel.Petit_L = 300;
  EXPECT_THROW((void)Calcule(partiel), Echec);
  partiel.Grand_L = 0;
  EXPECT_EQ(Calcule(partiel), 0);
}

TEST(UneContrainte, VaDeLaForceEtEnRevient) {
  EXPECT_DOUBLE_EQ(contrainte::DepuisForce(500, 100, {}), 50);  // 500 kN on a 100 mm cube
  EXPECT_DOUBLE_EQ(contrainte::DepuisForce(500, 100, 0.5), 25);
  EXPECT_EQ(contrainte::DepuisForce(500, 0, 0.5), 0);
  EXPECT_DOUBLE_EQ(contrainte::VersForce(50, 100, {}), 500);
  EXPECT_DOUBLE_EQ(contrainte::VersForce(25, 100, 0.5), 500);
  EXPECT_THROW((void)contrainte::VersForce(25, 100, 0.0), Echec);
}

TEST(UneUnité, ALeFacteurDesUnitésDeBase) {
  const struct {
    const char* texte;
    double facteur;
  } cas[] = {{"m", 100},       {"dm", 10},      {"CM", 1},    {"mm", 0.1},  {"µm", 0.0001},
             {"mg", 0.001},    {"g", 1},        {"Kg", 1000}, {"g/dm3", 1}, {"kg/m3", 1},
             {"kg/dm3", 1000}, {"g/cm3", 1000}, {"pouce", 0}, {"", 0}};
  for (const auto& c : cas) EXPECT_EQ(section::CoefficientUnité(c.texte), c.facteur) << c.texte;
}

}  // namespace
}  // namespace zuma
