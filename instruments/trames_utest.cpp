#include "instruments/trames_utest.h"

#include <algorithm>

namespace zuma::trames_utest {
namespace {

constexpr std::string_view kEntête = "UTEST";
constexpr std::size_t kPlaceLongueur = 5;
constexpr std::size_t kPlaceFonction = 7;
constexpr std::size_t kPlaceDonnées = 9;
constexpr std::array<std::uint8_t, 6> kFonctions{1, 2, 3, 7, 8, 11};  // by index of the request

constexpr std::uint8_t kEnMarche = 2;
constexpr double kPointsDeForce = 100'000;
constexpr double kPointsDeDéplacement = 1000;

std::uint8_t Octet(std::string_view trame, std::size_t place) noexcept {
  return static_cast<std::uint8_t>(trame[place]);
}

std::uint16_t Mot(std::string_view trame, std::size_t place) noexcept {
  return static_cast<std::uint16_t>(Octet(trame, place) << 8U | Octet(trame, place + 1));
}

// Data bytes are numbered from 1.
std::uint8_t Donnée(std::string_view trame, std::size_t rang) noexcept {
  return Octet(trame, kPlaceDonnées + rang - 1);
}

std::uint32_t DoubleMot(std::string_view trame, std::size_t rang) noexcept {
  std::uint32_t mot = 0;
  for (std::size_t i = 4; i > 0; --i) mot = mot << 8U | Donnée(trame, rang + i - 1);
  return mot;
}

char OuExclusif(std::string_view octets) noexcept {
  char somme = 0;
  for (const char octet : octets) somme = static_cast<char>(somme ^ octet);
  return somme;
}

}  // namespace

Trame ConstruitDemande(Demande demande) noexcept {
  Trame trame{};
  std::ranges::copy(kEntête, trame.begin());
  trame[kPlaceLongueur + 1] = static_cast<char>(kLongueurDemande);
  trame[kPlaceFonction + 1] = static_cast<char>(kFonctions[static_cast<std::size_t>(demande)]);
  trame.back() = OuExclusif({trame.data(), trame.size() - 1});
  return trame;
}

Code Analyse(Octets& tampon, const Attente& attente) {
  const std::size_t début = tampon.find(kEntête);
  if (début == Octets::npos) return Code::SansEntête;
  tampon.erase(0, début);
  if (tampon.size() < kPlaceDonnées || tampon.size() < Mot(tampon, kPlaceLongueur)) {
    return Code::Incomplète;
  }
  // The exclusive OR of a whole frame is zero: a second one behind it would pass unseen.
  const bool suivie = tampon.size() > Mot(tampon, kPlaceLongueur);
  if (suivie || OuExclusif(tampon) != 0) return Code::SommeFausse;
  if (Mot(tampon, kPlaceFonction) != attente.fonction) return Code::AutreFonction;
  if (tampon.size() < kPlaceDonnées + attente.données + 1) return Code::Incomplète;
  return Code::Bonne;
}

std::optional<Machine> DécodeIdentification(std::string_view trame) noexcept {
  const std::uint8_t genre = Donnée(trame, 1);
  if (genre > static_cast<std::uint8_t>(Machine::UU)) return {};
  return static_cast<Machine>(genre);
}

Mesures DécodeMesures(std::string_view trame) noexcept {
  return {.enMarche = Donnée(trame, 1) == kEnMarche,
          .force = static_cast<std::int32_t>(DoubleMot(trame, 5)) / kPointsDeForce,
          .déplacement = DoubleMot(trame, 9) / kPointsDeDéplacement};
}

}  // namespace zuma::trames_utest
