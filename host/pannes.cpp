#include "host/pannes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "host/configuration.h"

namespace zuma::host {
namespace {

using sim::GenreDePanne;
using sim::LieuDePanne;
using sim::PannePrévue;

constexpr std::string_view kAuHasard = "random";

// What is not put on by hand comes last.
constexpr std::array<std::pair<std::string_view, GenreDePanne>, 17> kGenres{{
    {"silence", GenreDePanne::Silence},
    {"deaf", GenreDePanne::Surdité},
    {"garbage", GenreDePanne::Brouillage},
    {"crc", GenreDePanne::FausseSomme},
    {"cut", GenreDePanne::Coupure},
    {"lose", GenreDePanne::Perte},
    {"add", GenreDePanne::Ajout},
    {"flip", GenreDePanne::Retournement},
    {"babble", GenreDePanne::Babillage},
    {"unplug", GenreDePanne::Débranchement},
    {"late", GenreDePanne::Retard},
    {"stuck", GenreDePanne::Figement},
    {"bounce", GenreDePanne::Rebond},
    {"hang", GenreDePanne::Blocage},
    {"dead", GenreDePanne::Mort},
    {"running", GenreDePanne::EnMarche},
    {"clock", GenreDePanne::Horloge},
}};
constexpr std::size_t kALaMain = 15;

constexpr std::array<std::pair<std::string_view, LieuDePanne>, 4> kLieux{{
    {"all", LieuDePanne::Partout},
    {"can", LieuDePanne::CAN},
    {"usb", LieuDePanne::USB},
    {"boards", LieuDePanne::Cartes},
}};

std::string Noms() {
  std::string noms(kAuHasard);
  for (const auto& [nom, genre] : kGenres) noms += ", " + std::string(nom);
  return noms;
}

[[noreturn]] void Refuse(std::string_view texte, std::string_view quoi) {
  throw MauvaisUsage(
      "--fault " + std::string(texte) + ": " + std::string(quoi) +
      "; expected KIND[:WHERE][@FROM[-TO]], KIND one of " + Noms() +
      ", WHERE all, can, usb, boards, a serial port's number or a board's base "
      "address as 0x220, FROM and TO in seconds, as in crc:9@2-4; clock:SECONDS puts "
      "the clock of the day forward, or back when negative");
}

template <class Nombre>
bool Lit(std::string_view texte, Nombre& nombre) {
  const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), nombre);
  return erreur == std::errc() && fin == texte.data() + texte.size() &&
         std::isfinite(static_cast<double>(nombre));
}

bool LitPositif(std::string_view texte, auto& nombre) {
  return Lit(texte, nombre) && nombre >= 0;
}

bool LitLaBase(std::string_view texte, std::int32_t& base) {
  constexpr std::string_view kPréfixe = "0x";
  if (!texte.starts_with(kPréfixe)) return false;
  texte.remove_prefix(kPréfixe.size());
  const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), base, 16);
  return erreur == std::errc() && fin == texte.data() + texte.size() && base >= 0;
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

// Where a kind strikes; a trial that disturbs nothing must not pass for one.
bool Frappe(GenreDePanne genre, LieuDePanne lieu) {
  using enum GenreDePanne;
  const auto est = [genre](auto... genres) { return ((genre == genres) || ...); };
  switch (lieu) {
    case LieuDePanne::Cartes:
    case LieuDePanne::Carte:
      return est(Rebond, Blocage, Mort);
    case LieuDePanne::CAN:
      return est(Silence, Surdité, Débranchement, Retard, Figement);
    case LieuDePanne::USB:
      return est(Silence, Surdité, Débranchement, Figement, EnMarche);
    case LieuDePanne::Port:
      return !est(Rebond, Blocage, Mort, Horloge);
    case LieuDePanne::Partout:
      return true;
  }
  return false;
}

void LitLeLieu(std::string_view lieu, std::string_view texte, PannePrévue& panne) {
  const auto connu = Cherche(kLieux, lieu);
  if (panne.genre == GenreDePanne::Horloge && Lit(lieu, panne.quantité)) return;
  if (connu != kLieux.end()) {
    panne.lieu = connu->second;
  } else if (LitLaBase(lieu, panne.port)) {
    panne.lieu = LieuDePanne::Carte;
  } else if (LitPositif(lieu, panne.port)) {
    panne.lieu = LieuDePanne::Port;
  } else {
    Refuse(texte, "no such place \"" + std::string(lieu) + "\"");
  }
}

void LitLeTemps(std::string_view temps, std::string_view texte, PannePrévue& panne) {
  bool avecFin = false;
  const std::string_view début = Coupe(temps, '-', avecFin);
  if (!LitPositif(début, panne.début) || (avecFin && !LitPositif(temps, panne.fin)) ||
      panne.fin < panne.début) {
    Refuse(texte, "unreadable time");
  }
}

}  // namespace

std::vector<PannePrévue> LitLesPannes(std::string_view texte, std::uint32_t graine) {
  constexpr double kToujours = std::numeric_limits<double>::infinity();
  constexpr double kAvance = 3600;  // seconds
  PannePrévue panne{.quantité = kAvance, .début = -kToujours, .fin = kToujours};
  std::string_view reste = texte;
  bool avecTemps = false;
  bool avecLieu = false;
  std::string_view tête = Coupe(reste, '@', avecTemps);
  const std::string_view nom = Coupe(tête, ':', avecLieu);
  const auto genre = Cherche(kGenres, nom);
  const bool auHasard = nom == kAuHasard;
  if (genre == kGenres.end() && !auHasard) Refuse(texte, "no such kind");
  if (!auHasard) panne.genre = genre->second;
  if (avecLieu) LitLeLieu(tête, texte, panne);
  if (!auHasard && !Frappe(panne.genre, panne.lieu)) {
    Refuse(texte, "such a fault does not strike there");
  }
  if (avecTemps && panne.genre == GenreDePanne::EnMarche)
    Refuse(texte, "it is found at the start, and takes no time");
  if (avecTemps) LitLeTemps(reste, texte, panne);
  if (auHasard) return sim::TireLesPannes(panne, graine);
  return {panne};
}

std::string_view NomDePanne(GenreDePanne genre) {
  return std::ranges::find(kGenres, genre, &std::pair<std::string_view, GenreDePanne>::second)
      ->first;
}

bool PanneSuivante(GenreDePanne& genre) {
  auto place =
      std::ranges::find(kGenres, genre, &std::pair<std::string_view, GenreDePanne>::second);
  if (++place >= kGenres.begin() + kALaMain) return false;
  genre = place->second;
  return true;
}

}  // namespace zuma::host
