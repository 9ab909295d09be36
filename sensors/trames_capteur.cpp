#include "sensors/trames_capteur.h"

#include <algorithm>

#include "base/echec.h"

namespace zuma::trames_capteur {
namespace {

constexpr char kBits7 = 0x7F;
constexpr std::size_t kLongueurRéservé1 = 14;
constexpr std::size_t kChiffresRéservé1 = 11;
constexpr std::size_t kLongueurRéservé2 = 10;
constexpr std::size_t kChiffresRéservé2 = 9;

std::optional<double> Nombre(std::string_view texte) {
  double nombre = 0;
  if (!LitNombre(texte, nombre)) return {};
  return nombre;
}

// The instruments fill with blanks between the sign and the digits.
std::optional<double> NombreSigné(std::string_view texte) {
  std::string nombre(texte.substr(0, 1));
  nombre += SansBlancs(texte.substr(1));
  return Nombre(nombre);
}

}  // namespace

std::optional<std::string> TrameSignée(const Octets& tampon) {
  std::string texte = tampon;
  std::ranges::transform(texte, texte.begin(),
                         [](char c) { return static_cast<char>(c & kBits7); });
  const auto fin = texte.rfind('\r');
  if (fin == std::string::npos) return {};
  texte.resize(fin);
  const auto signe = texte.find_last_of("+-");
  if (signe == std::string::npos) return {};
  return texte.substr(signe);
}

std::optional<Mesure> DécodeRéservé1(std::string_view trame) {
  if (trame.size() != kLongueurRéservé1) return {};
  return Mesure{NombreSigné(trame.substr(0, kChiffresRéservé1)),
                std::string(SansBlancs(trame.substr(kChiffresRéservé1)))};
}

std::optional<Mesure> DécodeRéservé2(std::string_view trame) {
  if (trame.size() != kLongueurRéservé2) return {};
  std::string_view nombre = trame.substr(0, kChiffresRéservé2);
  std::optional<std::string> unité;
  if (nombre.back() == ' ') unité = "mm";
  if (nombre.back() == '?' || nombre.back() == '"') {
    unité = std::string(1, nombre.back());
    nombre.remove_suffix(1);
  }
  return Mesure{NombreSigné(nombre), unité};
}

std::optional<Mesure> DécodeScout55(const Octets& tampon) {
  const auto fin = tampon.find("\r\n");
  const bool refus = tampon.find('?') != Octets::npos;
  if (fin == Octets::npos && !refus) return {};
  if (fin == Octets::npos) throw Echec(Numéro::AppelIncorrect);
  constexpr std::size_t kSuite = 2;
  if (tampon.find('?') < fin || fin < kSuite) return Mesure{};
  return Mesure{Nombre(std::string_view(tampon).substr(0, fin - kSuite)), {}};
}

}  // namespace zuma::trames_capteur
