#include "base/outils_modbus.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/echec.h"

namespace zuma::OutilsModbus {
namespace {

enum class Genre : std::uint8_t { Lecture, EcritureSimple, EcritureMultiple, Diagnostic };

struct FonctionModbus {
  std::uint8_t code;
  Genre genre;
  std::int32_t bitsParValeur;
  std::int32_t compteMaximal;  ///< items of one frame, by the protocol
};

constexpr std::array<FonctionModbus, 9> kFonctions{{
    {1, Genre::Lecture, 1, 2000},
    {2, Genre::Lecture, 1, 2000},
    {3, Genre::Lecture, 16, 125},
    {4, Genre::Lecture, 16, 125},
    {5, Genre::EcritureSimple, 1, 1},
    {6, Genre::EcritureSimple, 16, 1},
    {8, Genre::Diagnostic, 16, 1},
    {15, Genre::EcritureMultiple, 1, 1968},
    {16, Genre::EcritureMultiple, 16, 123},
}};

constexpr std::uint8_t kException = 0x80;
constexpr std::size_t kOctetsCrc = 2;
constexpr std::size_t kLongueurException = 5;
constexpr std::size_t kLongueurEcho = 8;
constexpr std::size_t kEnTêteLecture = 3;  // slave, function, byte count
constexpr std::uint16_t kBobineMise = 0xFF00;

const FonctionModbus* Trouve(std::int32_t code) noexcept {
  const auto* ligne = std::ranges::find(kFonctions, code, &FonctionModbus::code);
  return ligne == kFonctions.end() ? nullptr : ligne;
}

std::uint8_t Octet(std::string_view octets, std::size_t rang) noexcept {
  return static_cast<std::uint8_t>(octets[rang]);
}

std::uint16_t Mot(std::string_view octets, std::size_t rang) noexcept {
  return static_cast<std::uint16_t>(Octet(octets, rang) * 256U + Octet(octets, rang + 1));
}

void AjouteOctet(Octets& trame, unsigned octet) {
  trame += static_cast<char>(static_cast<std::uint8_t>(octet));
}

void AjouteMot(Octets& trame, std::uint16_t mot) {
  AjouteOctet(trame, mot >> 8U);
  AjouteOctet(trame, mot & 0xFFU);
}

std::size_t OctetsPour(std::int32_t compte, const FonctionModbus& fonction) noexcept {
  return static_cast<std::size_t>((compte * fonction.bitsParValeur + 7) / 8);
}

void AjouteBobines(Octets& trame, std::span<const std::uint16_t> valeurs) {
  for (std::size_t départ = 0; départ < valeurs.size(); départ += 8) {
    unsigned octet = 0;
    for (std::size_t bit = 0; bit < 8 && départ + bit < valeurs.size(); ++bit) {
      if (valeurs[départ + bit] != 0) octet |= 1U << bit;
    }
    AjouteOctet(trame, octet);
  }
}

std::uint16_t ValeurSimple(const FonctionModbus& fonction, std::uint16_t valeur) {
  if (fonction.bitsParValeur != 1) return valeur;
  return valeur == 0 ? std::uint16_t{0} : kBobineMise;
}

void VérifieCompte(const FonctionModbus& fonction, std::int32_t compte) {
  if (compte >= 1 && compte <= fonction.compteMaximal) return;
  throw Echec(Numéro::AppelIncorrect, "Fonction Modbus " + std::to_string(fonction.code) + " : " +
                                          std::to_string(compte) + " valeur(s), de 1 à " +
                                          std::to_string(fonction.compteMaximal) + " attendues");
}

void Exige(std::string_view quoi, std::int32_t nombre, std::int32_t maximum) {
  if (nombre >= 0 && nombre <= maximum) return;
  throw Echec(Numéro::Dépassement, DescriptionDEchec(Numéro::Dépassement) + " : " +
                                       std::string(quoi) + " Modbus " + std::to_string(nombre) +
                                       ", de 0 à " + std::to_string(maximum) + " attendu");
}

bool CrcJuste(std::string_view trame) noexcept {
  const std::size_t corps = trame.size() - kOctetsCrc;
  const auto reçu =
      static_cast<std::uint16_t>(Octet(trame, corps) + Octet(trame, corps + 1) * 256U);
  return reçu == Crc16(trame.substr(0, corps));
}

Résultat Refus(const FonctionModbus& fonction) noexcept {
  switch (fonction.genre) {
    case Genre::Lecture:
      return Résultat::LectureRefusée;
    case Genre::Diagnostic:
      return Résultat::Diagnostic;
    case Genre::EcritureSimple:
    case Genre::EcritureMultiple:
      break;
  }
  return Résultat::EcritureRefusée;
}

// A write or a diagnostic is answered by the first six bytes of its question.
Résultat JugeEcho(std::string_view réponse, std::string_view question,
                  const FonctionModbus& fonction) noexcept {
  constexpr std::size_t kCorps = kLongueurEcho - kOctetsCrc;
  if (réponse.substr(0, kCorps) == question.substr(0, kCorps)) return Résultat::Bonne;
  return fonction.genre == Genre::Diagnostic ? Résultat::Diagnostic : Résultat::Inconnue;
}

void Range(std::string_view données, FormeValeurs forme, Valeurs& valeurs) noexcept {
  valeurs.Vide();
  const std::size_t pas = forme == FormeValeurs::Mots ? 2 : 1;
  for (std::size_t i = 0; i + pas <= données.size(); i += pas) {
    valeurs.Ajoute(pas == 2 ? Mot(données, i) : Octet(données, i));
  }
}

}  // namespace

void Valeurs::Ajoute(std::uint16_t valeur) {
  if (nombre_ == kCapacité) throw Echec(Numéro::IndiceHorsPlage);
  valeurs_[nombre_++] = valeur;
}

std::uint16_t Valeurs::Item(std::int32_t rang) const {
  if (rang < 1 || rang > Nombre()) throw Echec(Numéro::IndiceHorsPlage);
  return valeurs_[static_cast<std::size_t>(rang - 1)];
}

std::uint16_t Crc16(std::string_view octets) noexcept {
  std::uint16_t crc = 0xFFFF;
  for (const char c : octets) {
    crc = static_cast<std::uint16_t>(crc ^ static_cast<std::uint8_t>(c));
    for (int bit = 0; bit < 8; ++bit) {
      const bool sorti = (crc & 1U) != 0;
      crc = static_cast<std::uint16_t>(crc >> 1U);
      if (sorti) crc = static_cast<std::uint16_t>(crc ^ 0xA001U);
    }
  }
  return crc;
}

std::uint16_t Registre(double nombre) {
  const double arrondi = std::round(nombre);
  if (!(arrondi >= -32768 && arrondi <= 65535)) throw Echec(Numéro::Dépassement);
  return static_cast<std::uint16_t>(static_cast<std::int32_t>(arrondi));
}

void ConstruitQuestion(std::int32_t esclave, std::int32_t fonction, std::int32_t premierRegistre,
                       std::int32_t compte, std::span<const std::uint16_t> valeurs,
                       Octets& question) {
  const FonctionModbus* ligne = Trouve(fonction);
  if (ligne == nullptr) {
    throw Echec(Numéro::AppelIncorrect, "Fonction Modbus " + std::to_string(fonction) +
                                            " inconnue : 1 à 6, 8, 15 ou 16 attendues");
  }
  Exige("Esclave", esclave, 0xFF);
  Exige("Registre", premierRegistre, 0xFFFF);
  const bool lecture = ligne->genre == Genre::Lecture;
  const std::int32_t nombre = lecture ? compte : static_cast<std::int32_t>(valeurs.size());
  VérifieCompte(*ligne, nombre);

  question.clear();
  AjouteOctet(question, static_cast<unsigned>(esclave));
  AjouteOctet(question, ligne->code);
  AjouteMot(question, static_cast<std::uint16_t>(premierRegistre));
  if (ligne->genre == Genre::EcritureSimple || ligne->genre == Genre::Diagnostic) {
    AjouteMot(question, ValeurSimple(*ligne, valeurs.front()));
  } else {
    AjouteMot(question, static_cast<std::uint16_t>(nombre));
  }
  if (ligne->genre == Genre::EcritureMultiple) {
    AjouteOctet(question, static_cast<unsigned>(OctetsPour(nombre, *ligne)));
    if (ligne->bitsParValeur == 1) {
      AjouteBobines(question, valeurs);
    } else {
      for (const std::uint16_t valeur : valeurs) AjouteMot(question, valeur);
    }
  }
  const std::uint16_t crc = Crc16(question);
  AjouteOctet(question, crc & 0xFFU);
  AjouteOctet(question, crc >> 8U);
}

double Silence(std::int32_t bauds) noexcept {
  constexpr double kBits = 3.5 * 11;
  return kBits * 1e6 / std::max(bauds, 1);
}

std::int32_t LongueurTrame(std::string_view question) noexcept {
  if (question.size() < kLongueurEcho) return 0;
  const FonctionModbus* ligne = Trouve(Octet(question, 1));
  if (ligne == nullptr) return 0;
  if (ligne->genre != Genre::Lecture) return static_cast<std::int32_t>(kLongueurEcho);
  return static_cast<std::int32_t>(kEnTêteLecture + OctetsPour(Mot(question, 4), *ligne) +
                                   kOctetsCrc);
}

std::size_t LongueurRéponse(std::string_view octets) noexcept {
  if (octets.size() < kLongueurException) return 0;
  const std::int32_t code = Octet(octets, 1);
  const FonctionModbus* ligne = Trouve(code & ~std::int32_t{kException});
  if (ligne == nullptr) return 0;
  std::size_t longueur = kLongueurEcho;
  if (ligne->genre == Genre::Lecture) longueur = kEnTêteLecture + Octet(octets, 2) + kOctetsCrc;
  if (code > kException) longueur = kLongueurException;
  return octets.size() >= longueur && CrcJuste(octets.substr(0, longueur)) ? longueur : 0;
}

Résultat DécodeRéponse(std::string_view réponse, std::string_view question, Valeurs* valeurs,
                       FormeValeurs forme, Longueur mesure) noexcept {
  auto longueur = static_cast<std::size_t>(LongueurTrame(question));
  if (longueur == 0) return Résultat::Inconnue;
  const FonctionModbus& fonction = *Trouve(Octet(question, 1));
  if (réponse.empty()) return Résultat::Incomplète;
  if (réponse[0] != question[0]) return Résultat::AutreEsclave;
  if (réponse.size() < 2) return Résultat::Incomplète;
  if (Octet(réponse, 1) == (fonction.code | kException)) {
    if (réponse.size() < kLongueurException) return Résultat::Incomplète;
    return CrcJuste(réponse.substr(0, kLongueurException)) ? Refus(fonction) : Résultat::Crc;
  }
  if (réponse[1] != question[1]) return Résultat::AutreFonction;
  if (mesure == Longueur::Annoncée && fonction.genre == Genre::Lecture) {
    if (réponse.size() < kEnTêteLecture) return Résultat::Incomplète;
    longueur = kEnTêteLecture + Octet(réponse, 2) + kOctetsCrc;
  }
  if (réponse.size() < longueur) return Résultat::Incomplète;
  const std::string_view trame = réponse.substr(0, longueur);
  if (!CrcJuste(trame)) return Résultat::Crc;
  if (fonction.genre != Genre::Lecture) return JugeEcho(trame, question, fonction);
  const std::string_view données =
      trame.substr(kEnTêteLecture, longueur - kEnTêteLecture - kOctetsCrc);
  if (Octet(trame, 2) != données.size()) return Résultat::Inconnue;
  if (valeurs != nullptr) Range(données, forme, *valeurs);
  return Résultat::Bonne;
}

}  // namespace zuma::OutilsModbus
