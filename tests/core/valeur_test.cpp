#include "base/valeur.h"

#include <cmath>

#include <gtest/gtest.h>

#include "base/outils_communs.h"
#include "outils/cas.h"
#include "outils/numero.h"

namespace zuma {
namespace {

using essai::Cas;
using essai::NuméroDe;
using OutilsCommuns::HexaVersLong;

TEST(Valeur, RétrécitVersLePairEtEchoueHorsPlage) {
  for (const auto& [valeur, attendu] :
       Cas<double, int>{{2.5, 2}, {3.5, 4}, {-2.5, -2}, {32767.4, 32767}, {-32768.5, -32768}}) {
    EXPECT_EQ(VersEntier16(valeur), attendu);
  }
  EXPECT_EQ(VersEntier32(2147483647.4), 2147483647);
  for (const double valeur : {32767.5, -32769.0, std::nan("")}) {
    EXPECT_EQ(NuméroDe([&] { (void)VersEntier16(valeur); }), 6) << valeur;
  }
  EXPECT_EQ(NuméroDe([] { (void)VersEntier32(2147483648.0); }), 6);
}

TEST(Valeur, LitLesTextesAuxNormesFrançaises) {
  for (const auto& [texte, attendu] :
       Cas<const char*, double>{{" 12,5 ", 12.5}, {"-0.25", -0.25}, {"+3", 3}, {"1E3", 1000}}) {
    EXPECT_EQ(VersDouble(Valeur(texte)), attendu);
  }
  for (const char* texte : {"", "1 000", "nan", "inf", "+-3", "1,2,3", "1e999", "0x10", "douze"}) {
    EXPECT_EQ(NuméroDe([&] { (void)VersDouble(Valeur(texte)); }), 13) << texte;
  }
  EXPECT_EQ(NuméroDe([] { (void)VersDouble(Nul{}); }), 94);
  EXPECT_EQ(NuméroDe([] { (void)Divise(1, 0); }), 11);
  EXPECT_EQ(VersDouble(true), -1);
}

TEST(Valeur, EcritLesNombresPourLesGens) {
  for (const auto& [nombre, texte] : Cas<double, const char*>{
           {12.5, "12,5"}, {0.1 + 0.2, "0,3"}, {-0.0, "0"}, {65536, "65536"}}) {
    EXPECT_EQ(TexteDeNombre(nombre), texte);
  }
  EXPECT_EQ(TexteDeNombre(1.0 / 3, '.'), "0.333333333333333");
}

TEST(OutilsCommuns, ChampSûrEtHexadécimal) {
  EXPECT_EQ(OutilsCommuns::LitChampSûr(" 3.5 "), Valeur(3.5));
  EXPECT_TRUE(EstNul(OutilsCommuns::LitChampSûr("panne")));
  for (const auto& [texte, attendu] :
       Cas<Valeur, int>{{" 2A0 ", 0x2A0}, {300, 0x300}, {"FFFFFFFF", -1}}) {
    EXPECT_EQ(HexaVersLong(texte), attendu);
  }
  for (const auto& [texte, échec] :
       Cas<Valeur, int>{{"G1", 13}, {"1G", 13}, {"123456789", 13}, {Nul{}, 94}}) {
    EXPECT_EQ(NuméroDe([&t = texte] { (void)HexaVersLong(t); }), échec);
  }
}

}  // namespace
}  // namespace zuma
