#include "sensors/trames_capteur.h"

#include <gtest/gtest.h>

#include "core/echec.h"

namespace zuma::trames_capteur {
namespace {

TEST(UneTrameSignée, VaDuDernierSigneAuDernierRetour) {
  const struct {
    const char* reçu;
    const char* trame;  // null: more is to come
  } cas[] = {
      {"", nullptr},          {"+   12.34 g  ", nullptr},   {"12.34\r", nullptr},
      {"+12.34\r", "+12.34"}, {"+1.0\r\n-2.0\r\n", "-2.0"}, {"-1.0+2.0\r+3", "+2.0"},
      {"\xAB\xB1\x8D", "+1"},  // the parity bit of each character is set
  };
  for (const auto& c : cas) {
    const auto trame = TrameSignée(c.reçu);
    ASSERT_EQ(trame.has_value(), c.trame != nullptr) << c.reçu;
    if (c.trame != nullptr) {
      EXPECT_EQ(*trame, c.trame);
    }
  }
}

TEST(UneMesure, SeLitParSaLongueur) {
  const auto balance = DécodeRéservé1("-    123.45 g ");
  ASSERT_TRUE(balance);
  EXPECT_EQ(balance->nombre, -123.45);
  EXPECT_EQ(balance->unité, "g");
  EXPECT_FALSE(DécodeRéservé1("+ERR 12345 kg ")->nombre);
  EXPECT_FALSE(DécodeRéservé1("+ 123.45 g"));

  const struct {
    const char* trame;
    double nombre;
    std::optional<std::string> unité;
  } cas[] = {
      {"+ 12.345  ", 12.345, "mm"},
      {"+ 0.48615x", 0.48615, std::nullopt},
      {"+ 0.4861\"x", 0.4861, "\""},
      {"-  1.250? ", -1.25, "?"},
  };
  for (const auto& c : cas) {
    const auto mesure = DécodeRéservé2(c.trame);
    ASSERT_TRUE(mesure) << c.trame;
    EXPECT_EQ(mesure->nombre, c.nombre) << c.trame;
    EXPECT_EQ(mesure->unité, c.unité) << c.trame;
  }
  EXPECT_FALSE(DécodeRéservé2("+  12.345 x"));
  EXPECT_FALSE(DécodeRéservé2("+ 12,x45  ")->nombre);
}

TEST(UneRéponseScout55, DonneLeNombreAvantSesDeuxDerniersCaractères) {
  EXPECT_FALSE(DécodeScout55("12.5 N"));
  EXPECT_EQ(DécodeScout55("12.5 N\r\n")->nombre, 12.5);
  EXPECT_EQ(DécodeScout55("-3,25kg\r\n+1 N\r\n")->nombre, -3.25);
  for (const char* vide : {"?\r\n", "12?5 N\r\n", "\r\n", "N\r\n", "OVERLOAD\r\n"}) {
    ASSERT_TRUE(DécodeScout55(vide)) << vide;
    EXPECT_FALSE(DécodeScout55(vide)->nombre) << vide;
  }
  EXPECT_THROW((void)DécodeScout55("?"), Echec);
}

}  // namespace
}  // namespace zuma::trames_capteur
