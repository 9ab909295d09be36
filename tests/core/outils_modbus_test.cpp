// Modbus frames against published examples, and answers gone wrong one way at a time.
#include "base/outils_modbus.h"

#include <gtest/gtest.h>

#include "base/echec.h"
#include "outils/cas.h"

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

// Function bodies are the worked examples of the application protocol V1.1b3, sections 6.1 to 6.12.
TEST(OutilsModbusTest, ConstruitLesQuestionsPubliées) {
  using Mots = std::vector<std::uint16_t>;
  Octets question;
  for (const auto& [fonction, registre, compte, valeurs, trame, longueur] :
       essai::Cas<int, int, int, Mots, const char*, int>{
           {1, 0x13, 0x13, {}, "11 01 00 13 00 13", 8},
           {2, 0xC4, 0x16, {}, "11 02 00 C4 00 16", 8},
           {3, 0x6B, 3, {}, "11 03 00 6B 00 03", 11},
           {4, 8, 1, {}, "11 04 00 08 00 01", 7},
           {5, 0xAC, 0, {1}, "11 05 00 AC FF 00", 8},
           {6, 1, 0, {3}, "11 06 00 01 00 03", 8},
           {8, 0, 0, {0xA537}, "11 08 00 00 A5 37", 8},
           {15, 0x13, 0, {1, 0, 1, 1, 0, 0, 1, 1, 1, 0}, "11 0F 00 13 00 0A 02 CD 01", 8},
           {16, 1, 0, {0x000A, 0x0102}, "11 10 00 01 00 02 04 00 0A 01 02", 8}}) {
    ConstruitQuestion(0x11, fonction, registre, compte, valeurs, question);
    EXPECT_EQ(question, AvecCrc(trame)) << trame;
    EXPECT_EQ(LongueurTrame(question), longueur) << trame;
  }
  EXPECT_EQ(Crc16("123456789"), 0x4B37) << "check value of CRC-16/MODBUS in the catalogues";
  // What no slave would understand.
  const std::tuple<int, int, int, int> cas[] = {{1, 7, 0, 1},     {1, 3, 0, 0},  {1, 3, 0, 126},
                                                {1, 3, 65536, 1}, {1, 16, 0, 4}, {-1, 3, 0, 1},
                                                {256, 3, 0, 1}};
  for (const auto& [esclave, fonction, registre, compte] : cas) {
    EXPECT_THROW(ConstruitQuestion(esclave, fonction, registre, compte, {}, question), Echec)
        << esclave << " " << fonction << " " << registre << " " << compte;
  }
  EXPECT_NO_THROW(ConstruitQuestion(255, 16, 65535, 4, Mots{1}, question));
  EXPECT_EQ(LongueurTrame(""), 0);
}

TEST(OutilsModbusTest, DitCeQuEstChaqueRéponse) {
  using enum Résultat;
  const Octets lecture = AvecCrc("11 03 00 6B 00 03");
  const Octets écriture = AvecCrc("11 06 00 01 00 03");
  const Octets diagnostic = AvecCrc("11 08 00 00 A5 37");
  const Octets bonne = AvecCrc("11 03 06 02 2B 00 00 00 64");
  Octets faussée = bonne;
  faussée[4] = '\x2A';
  for (const auto& [quoi, question, réponse, attendu] :
       essai::Cas<const char*, Octets, Octets, Résultat>{
           {"rien", lecture, "", Incomplète},
           {"un octet", lecture, bonne.substr(0, 1), Incomplète},
           {"un octet de moins", lecture, bonne.substr(0, bonne.size() - 1), Incomplète},
           {"bavarde", lecture, bonne + "\x11\x03", Bonne},
           {"autre esclave", lecture, AvecCrc("12 03 06 02 2B 00 00 00 64"), AutreEsclave},
           {"autre fonction", lecture, AvecCrc("11 04 06 02 2B 00 00 00 64"), AutreFonction},
           {"un bit tourné", lecture, faussée, Crc},
           {"autre nombre d'octets", lecture, AvecCrc("11 03 04 02 2B 00 00 00 64"), Inconnue},
           {"exception coupée", lecture, AvecCrc("11 83 02").substr(0, 4), Incomplète},
           {"lecture refusée", lecture, AvecCrc("11 83 02"), LectureRefusée},
           {"exception faussée", lecture, Hexa("11 83 02 00 00 "), Crc},
           {"écriture faite", écriture, écriture, Bonne},
           {"écriture refusée", écriture, AvecCrc("11 86 04"), EcritureRefusée},
           {"autre valeur écrite", écriture, AvecCrc("11 06 00 01 00 04"), Inconnue},
           {"autre écho", diagnostic, AvecCrc("11 08 00 00 A5 36"), Diagnostic},
           {"diagnostic refusé", diagnostic, AvecCrc("11 88 01"), Diagnostic}}) {
    EXPECT_EQ(DécodeRéponse(réponse, question, nullptr, FormeValeurs::Mots), attendu) << quoi;
  }
  Valeurs valeurs;
  ASSERT_EQ(DécodeRéponse(bonne, lecture, &valeurs, FormeValeurs::Mots), Bonne);
  EXPECT_EQ(valeurs.Nombre(), 3);
  EXPECT_EQ(valeurs.Item(1), 0x022B);
  ASSERT_EQ(DécodeRéponse(bonne, lecture, &valeurs, FormeValeurs::Octets), Bonne);
  EXPECT_EQ(valeurs.Item(6), 0x64);
  EXPECT_THROW((void)valeurs.Item(7), Echec);
  EXPECT_THROW((void)valeurs.Item(0), Echec);
}

}  // namespace
}  // namespace zuma::OutilsModbus
