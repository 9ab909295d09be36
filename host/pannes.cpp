#include "host/pannes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include "host/configuration.h"

namespace zuma::host {
namespace {

using sim::GenreDePanne;
using sim::LieuDePanne;
using sim::PannePrévue;

constexpr std::array<std::pair<std::string_view, GenreDePanne>, 8> kGenres{{
    {"silence", GenreDePanne::Silence},
    {"garbage", GenreDePanne::Brouillage},
    {"crc", GenreDePanne::FausseSomme},
    {"cut", GenreDePanne::Coupure},
    {"babble", GenreDePanne::Babillage},
    {"unplug", GenreDePanne::Débranchement},
    {"late", GenreDePanne::Retard},
    {"stuck", GenreDePanne::Figement},
}};

constexpr std::array<std::pair<std::string_view, LieuDePanne>, 3> kLieux{{
    {"all", LieuDePanne::Partout},
    {"can", LieuDePanne::CAN},
    {"usb", LieuDePanne::USB},
}};

[[noreturn]] void Refuse(std::string_view texte, std::string_view quoi) {
  throw MauvaisUsage(
      "--fault " + std::string(texte) + ": " + std::string(quoi) +
      "; expected KIND[:WHERE][@FROM[-TO]], KIND one of silence, garbage, crc, cut, "
      "babble, unplug, late, stuck, WHERE all, can, usb or a serial port's number, FROM and TO in "
      "seconds, as in crc:9@2-4");
}

template <class Nombre>
bool Lit(std::string_view texte, Nombre& nombre) {
  const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), nombre);
  return erreur == std::errc() && fin == texte.data() + texte.size() && nombre >= 0;
}

// The text up to the sign, which is taken off with it; what is left stays in `texte`.
std::string_view Coupe(std::string_view& texte, char signe, bool& coupé) {
  const std::size_t place = texte.find(signe);
  coupé = place != std::string_view::npos;
  const std::string_view tête = texte.substr(0, place);
  texte = coupé ? texte.substr(place + 1) : std::string_view();
  return tête;
}

template <class Table>
auto Cherche(const Table& table, std::string_view nom) {
  return std::ranges::find(table, nom, &Table::value_type::first);
}

void LitLeLieu(std::string_view lieu, std::string_view texte, PannePrévue& panne) {
  const auto connu = Cherche(kLieux, lieu);
  if (connu != kLieux.end()) {
    panne.lieu = connu->second;
  } else if (Lit(lieu, panne.port)) {
    panne.lieu = LieuDePanne::Port;
  } else {
    Refuse(texte, "no such place \"" + std::string(lieu) + "\"");
  }
}

void LitLeTemps(std::string_view temps, std::string_view texte, PannePrévue& panne) {
  bool avecFin = false;
  const std::string_view début = Coupe(temps, '-', avecFin);
  if (!Lit(début, panne.début) || (avecFin && !Lit(temps, panne.fin)) || panne.fin < panne.début) {
    Refuse(texte, "unreadable time");
  }
}

}  // namespace

PannePrévue LitLaPanne(std::string_view texte) {
  PannePrévue panne{.fin = std::numeric_limits<double>::infinity()};
  std::string_view reste = texte;
  bool avecTemps = false;
  bool avecLieu = false;
  std::string_view tête = Coupe(reste, '@', avecTemps);
  const auto genre = Cherche(kGenres, Coupe(tête, ':', avecLieu));
  if (genre == kGenres.end()) Refuse(texte, "no such kind");
  panne.genre = genre->second;
  if (avecLieu) LitLeLieu(tête, texte, panne);
  if (avecTemps) LitLeTemps(reste, texte, panne);
  return panne;
}

std::string_view NomDePanne(GenreDePanne genre) {
  return std::ranges::find(kGenres, genre, &std::pair<std::string_view, GenreDePanne>::second)
      ->first;
}

bool PanneSuivante(GenreDePanne& genre) {
  auto place =
      std::ranges::find(kGenres, genre, &std::pair<std::string_view, GenreDePanne>::second);
  if (++place == kGenres.end()) return false;
  genre = place->second;
  return true;
}

}  // namespace zuma::host
