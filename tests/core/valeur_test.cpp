#include "core/valeur.h"

#include <limits>

#include <gtest/gtest.h>

#include "core/echec.h"
#include "core/outils_communs.h"

namespace zuma {
namespace {

template <class Travail>
int NuméroDe(Travail&& travail) {
  try {
    travail();
  } catch (const Echec& e) {
    return e.NuméroErreur();
  }
  return 0;
}

TEST(Valeur, RétrécitVersLePairEtEchoueHorsPlage) {
  const struct {
    double valeur;
    int attendu;
    int échec;
  } cas[] = {{2.5, 2, 0},     {3.5, 4, 0},           {-2.5, -2, 0}, {32767.4, 32767, 0},
             {32767.5, 0, 6}, {-32768.5, -32768, 0}, {-32769, 0, 6}};
  for (const auto& c : cas) {
    if (c.échec == 0) {
      EXPECT_EQ(VersEntier16(c.valeur), c.attendu) << c.valeur;
    } else {
      EXPECT_EQ(NuméroDe([&] { (void)VersEntier16(c.valeur); }), c.échec) << c.valeur;
    }
  }
  EXPECT_EQ(VersEntier32(2147483647.4), 2147483647);
  EXPECT_EQ(NuméroDe([] { (void)VersEntier32(2147483648.0); }), 6);
  EXPECT_EQ(NuméroDe([] { (void)VersEntier32(std::numeric_limits<double>::quiet_NaN()); }), 6);
}

TEST(Valeur, LitLesTextesAuxNormesFrançaises) {
  const struct {
    const char* texte;
    double attendu;
    bool lisible;
  } cas[] = {{" 12,5 ", 12.5, true}, {"-0.25", -0.25, true}, {"+3", 3, true},
             {"1E3", 1000, true},    {"", 0, false},         {"1 000", 0, false},
             {"nan", 0, false},      {"inf", 0, false},      {"+-3", 0, false},
             {"1,2,3", 0, false},    {"1e999", 0, false},    {"0x10", 0, false}};
  for (const auto& c : cas) {
    double lu = 0;
    EXPECT_EQ(LitNombre(c.texte, lu), c.lisible) << c.texte;
    if (c.lisible) {
      EXPECT_DOUBLE_EQ(lu, c.attendu) << c.texte;
    }
  }
  EXPECT_EQ(NuméroDe([] { (void)VersDouble(Valeur(Nul{})); }), 94);
  EXPECT_EQ(NuméroDe([] { (void)VersDouble(Valeur("douze")); }), 13);
  EXPECT_EQ(NuméroDe([] { (void)Divise(1, 0); }), 11);
  EXPECT_EQ(VersDouble(Valeur(true)), -1);
}

TEST(Valeur, EcritLesNombresPourLesGens) {
  EXPECT_EQ(TexteDeNombre(12.5), "12,5");
  EXPECT_EQ(TexteDeNombre(0.1 + 0.2), "0,3");
  EXPECT_EQ(TexteDeNombre(-0.0), "0");
  EXPECT_EQ(TexteDeNombre(1.0 / 3, '.'), "0.333333333333333");
  EXPECT_EQ(TexteDeNombre(65536), "65536");
}

TEST(OutilsCommuns, ChampSûrEtHexadécimal) {
  EXPECT_EQ(OutilsCommuns::LitChampSûr(Valeur(" 3.5 ")), Valeur(3.5));
  EXPECT_TRUE(EstNul(OutilsCommuns::LitChampSûr(Valeur("panne"))));
  EXPECT_EQ(OutilsCommuns::HexaVersLong(Valeur(" 2A0 ")), 0x2A0);
  EXPECT_EQ(OutilsCommuns::HexaVersLong(Valeur(std::int32_t{300})), 0x300);
  EXPECT_EQ(OutilsCommuns::HexaVersLong(Valeur("FFFFFFFF")), -1);
  EXPECT_EQ(NuméroDe([] { (void)OutilsCommuns::HexaVersLong(Valeur("G1")); }), 13);
  EXPECT_EQ(NuméroDe([] { (void)OutilsCommuns::HexaVersLong(Valeur("123456789")); }), 13);
  EXPECT_EQ(NuméroDe([] { (void)OutilsCommuns::HexaVersLong(Valeur(Nul{})); }), 94);
}

}  // namespace
}  // namespace zuma
