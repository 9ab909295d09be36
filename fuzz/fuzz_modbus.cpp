// Modbus answers on any bytes: the analysis ends within its frames and a good answer has a good
// checksum.
#include "base/echec.h"
#include "base/outils_modbus.h"
#include "fuzz/entree.h"

using namespace zuma;
using namespace zuma::OutilsModbus;

namespace {

// An answer that fits the question better than chance would: right slave, function and length, the
// one that is asked or the one that chance announces.
Octets Ajustée(std::string_view brute, std::string_view question, Longueur mesure) {
  Octets réponse(brute);
  auto longueur = static_cast<std::size_t>(LongueurTrame(question));
  if (longueur < 5) return réponse;
  if (mesure == Longueur::Annoncée && brute.size() > 2) {
    longueur = static_cast<std::uint8_t>(brute[2]) + std::size_t{5};
  }
  réponse.resize(longueur);
  réponse[0] = question[0];
  réponse[1] = question[1];
  réponse[2] = static_cast<char>(longueur - 5);
  const std::uint16_t crc = Crc16(std::string_view(réponse).substr(0, longueur - 2));
  réponse[longueur - 2] = static_cast<char>(crc & 0xFFU);
  réponse[longueur - 1] = static_cast<char>(crc >> 8U);
  return réponse;
}

void Analyse(std::string_view réponse, std::string_view question, FormeValeurs forme,
             Longueur mesure) {
  Valeurs valeurs;
  const Résultat résultat = DécodeRéponse(réponse, question, &valeurs, forme, mesure);
  Exige(résultat >= Résultat::Bonne && résultat <= Résultat::LectureRefusée, "résultat connu");
  if (résultat != Résultat::Bonne) return;
  const bool lecture = question[1] >= 1 && question[1] <= 4;
  const auto longueur = mesure == Longueur::Annoncée && lecture
                            ? static_cast<std::uint8_t>(réponse[2]) + std::size_t{5}
                            : static_cast<std::size_t>(LongueurTrame(question));
  Exige(longueur >= 4 && longueur <= réponse.size(), "longueur d'une bonne réponse");
  const unsigned crc = Crc16(réponse.substr(0, longueur - 2));
  Exige(static_cast<std::uint8_t>(réponse[longueur - 2]) == (crc & 0xFFU) &&
            static_cast<std::uint8_t>(réponse[longueur - 1]) == crc >> 8U,
        "CRC d'une bonne réponse");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  Entrée entrée(données, taille);
  const std::uint8_t options = entrée.Octet();
  const auto forme = options % 2 == 0 ? FormeValeurs::Octets : FormeValeurs::Mots;
  const auto mesure = options % 4 < 2 ? Longueur::Demandée : Longueur::Annoncée;
  const std::uint8_t esclave = entrée.Octet();
  const std::int32_t fonction = entrée.Octet() % 20;
  const std::int32_t registre = entrée.Octet() * 256 + entrée.Octet();
  const std::int32_t compte = entrée.Octet();
  const std::array<std::uint16_t, 3> valeurs{1, 0xFFFF, 0};
  Octets question;
  try {
    ConstruitQuestion(esclave, fonction, registre, compte, valeurs, question);
  } catch (const Echec&) {
    question = entrée.Octets(8);  // a question that no one builds
  }
  Analyse(entrée.Reste(), question, forme, mesure);
  Analyse(Ajustée(entrée.Reste(), question, mesure), question, forme, mesure);
  return 0;
}
