// Modbus frames against published examples, and answers gone wrong one way at a time.
#include "core/outils_modbus.h"

#include <gtest/gtest.h>

#include "core/echec.h"

namespace zuma::OutilsModbus {
namespace {

Octets Hexa(std::string_view texte) {
  Octets octets;
  for (std::size_t i = 0; i + 1 < texte.size(); i += 3) {
    octets += static_cast<char>(std::stoi(std::string(texte.substr(i, 2)), nullptr, 16));
  }
  return octets;
}

Octets AvecCrc(std::string_view corps) {
  Octets trame = Hexa(corps);
  const std::uint16_t crc = Crc16(trame);
  trame += static_cast<char>(crc & 0xFFU);
  trame += static_cast<char>(crc >> 8U);
  return trame;
}

// Check value of CRC-16/MODBUS in the catalogues of CRC parameters.
TEST(OutilsModbusTest, CalculeLeCrcDuCatalogue) {
  EXPECT_EQ(Crc16("123456789"), 0x4B37);
}

// Function bodies are the worked examples of the application protocol V1.1b3, sections 6.1 to 6.12.
TEST(OutilsModbusTest, ConstruitLesQuestionsPubliées) {
  const struct {
    std::int32_t fonction, registre, compte;
    std::vector<std::uint16_t> valeurs;
    const char* trame;
    std::int32_t longueurRéponse;
  } cas[] = {
      {1, 0x13, 0x13, {}, "11 01 00 13 00 13", 8},
      {2, 0xC4, 0x16, {}, "11 02 00 C4 00 16", 8},
      {3, 0x6B, 3, {}, "11 03 00 6B 00 03", 11},
      {4, 8, 1, {}, "11 04 00 08 00 01", 7},
      {5, 0xAC, 0, {1}, "11 05 00 AC FF 00", 8},
      {6, 1, 0, {3}, "11 06 00 01 00 03", 8},
      {8, 0, 0, {0xA537}, "11 08 00 00 A5 37", 8},
      {15, 0x13, 0, {1, 0, 1, 1, 0, 0, 1, 1, 1, 0}, "11 0F 00 13 00 0A 02 CD 01", 8},
      {16, 1, 0, {0x000A, 0x0102}, "11 10 00 01 00 02 04 00 0A 01 02", 8},
  };
  Octets question;
  for (const auto& c : cas) {
    ConstruitQuestion(0x11, c.fonction, c.registre, c.compte, c.valeurs, question);
    EXPECT_EQ(question, AvecCrc(c.trame)) << c.trame;
    EXPECT_EQ(LongueurTrame(question), c.longueurRéponse) << c.trame;
  }
}

TEST(OutilsModbusTest, RefuseCeQuAucunEsclaveNeComprendrait) {
  Octets question;
  const std::vector<std::uint16_t> une{1};
  const auto construit = [&](std::int32_t fonction, std::int32_t registre, std::int32_t compte,
                             std::span<const std::uint16_t> valeurs) {
    ConstruitQuestion(1, fonction, registre, compte, valeurs, question);
  };
  EXPECT_THROW(construit(7, 0, 1, {}), Echec);
  EXPECT_THROW(construit(3, 0, 0, {}), Echec);
  EXPECT_THROW(construit(3, 0, 126, {}), Echec);
  EXPECT_THROW(construit(3, 65536, 1, {}), Echec);
  EXPECT_THROW(construit(16, 0, 4, {}), Echec);
  for (const std::int32_t esclave : {-1, 256, 0x1FF}) {
    EXPECT_THROW(ConstruitQuestion(esclave, 3, 0, 1, {}, question), Echec) << esclave;
  }
  EXPECT_NO_THROW(construit(16, 65535, 4, une));
  EXPECT_EQ(LongueurTrame(""), 0);
}

TEST(OutilsModbusTest, DitCeQuEstChaqueRéponse) {
  Octets lecture;
  Octets écriture;
  Octets diagnostic;
  ConstruitQuestion(0x11, 3, 0x6B, 3, {}, lecture);
  ConstruitQuestion(0x11, 6, 1, 0, std::vector<std::uint16_t>{3}, écriture);
  ConstruitQuestion(0x11, 8, 0, 0, std::vector<std::uint16_t>{0xA537}, diagnostic);
  const Octets bonne = AvecCrc("11 03 06 02 2B 00 00 00 64");
  Octets faussée = bonne;
  faussée[4] = '\x2A';
  const struct {
    const char* quoi;
    const Octets& question;
    Octets réponse;
    Résultat attendu;
  } cas[] = {
      {"rien", lecture, "", Résultat::Incomplète},
      {"un octet", lecture, bonne.substr(0, 1), Résultat::Incomplète},
      {"un octet de moins", lecture, bonne.substr(0, bonne.size() - 1), Résultat::Incomplète},
      {"entière", lecture, bonne, Résultat::Bonne},
      {"bavarde", lecture, bonne + "\x11\x03", Résultat::Bonne},
      {"autre esclave", lecture, AvecCrc("12 03 06 02 2B 00 00 00 64"), Résultat::AutreEsclave},
      {"autre fonction", lecture, AvecCrc("11 04 06 02 2B 00 00 00 64"), Résultat::AutreFonction},
      {"un bit tourné", lecture, faussée, Résultat::Crc},
      {"autre nombre d'octets", lecture, AvecCrc("11 03 04 02 2B 00 00 00 64"), Résultat::Inconnue},
      {"exception coupée", lecture, AvecCrc("11 83 02").substr(0, 4), Résultat::Incomplète},
      {"lecture refusée", lecture, AvecCrc("11 83 02"), Résultat::LectureRefusée},
      {"exception faussée", lecture, Hexa("11 83 02 00 00 "), Résultat::Crc},
      {"écriture faite", écriture, écriture, Résultat::Bonne},
      {"écriture refusée", écriture, AvecCrc("11 86 04"), Résultat::EcritureRefusée},
      {"autre valeur écrite", écriture, AvecCrc("11 06 00 01 00 04"), Résultat::Inconnue},
      {"diagnostic", diagnostic, diagnostic, Résultat::Bonne},
      {"autre écho", diagnostic, AvecCrc("11 08 00 00 A5 36"), Résultat::Diagnostic},
      {"diagnostic refusé", diagnostic, AvecCrc("11 88 01"), Résultat::Diagnostic},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(DécodeRéponse(c.réponse, c.question, nullptr, FormeValeurs::Mots), c.attendu)
        << c.quoi;
  }
  Valeurs valeurs;
  ASSERT_EQ(DécodeRéponse(bonne, lecture, &valeurs, FormeValeurs::Mots), Résultat::Bonne);
  EXPECT_EQ(valeurs.Nombre(), 3);
  EXPECT_EQ(valeurs.Item(1), 0x022B);
  ASSERT_EQ(DécodeRéponse(bonne, lecture, &valeurs, FormeValeurs::Octets), Résultat::Bonne);
  EXPECT_EQ(valeurs.Nombre(), 6);
  EXPECT_EQ(valeurs.Item(6), 0x64);
  EXPECT_THROW((void)valeurs.Item(7), Echec);
  EXPECT_THROW((void)valeurs.Item(0), Echec);
}

}  // namespace
}  // namespace zuma::OutilsModbus
