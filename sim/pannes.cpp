#include "sim/pannes.h"

#include <array>
#include <utility>

namespace zuma::sim {
namespace {

constexpr char kUnBit = 0x10;
constexpr char kUneErreur = 0x55;

constexpr std::array<std::pair<GenreDePanne, bool Pannes::*>, 12> kGenres{{
    {GenreDePanne::Silence, &Pannes::muette},
    {GenreDePanne::Brouillage, &Pannes::brouillée},
    {GenreDePanne::FausseSomme, &Pannes::fausseSomme},
    {GenreDePanne::Coupure, &Pannes::coupée},
    {GenreDePanne::Babillage, &Pannes::babillarde},
    {GenreDePanne::Débranchement, &Pannes::débranchée},
    {GenreDePanne::Retard, &Pannes::tardive},
    {GenreDePanne::Figement, &Pannes::figée},
    {GenreDePanne::Surdité, &Pannes::sourde},
    {GenreDePanne::Perte, &Pannes::perdante},
    {GenreDePanne::Ajout, &Pannes::ajoutante},
    {GenreDePanne::Retournement, &Pannes::retournante},
}};

void Retourne(char& octet, char bits) {
  octet = static_cast<char>(octet ^ bits);
}

}  // namespace

char Hasard::Octet() {
  état_ ^= état_ << 13U;
  état_ ^= état_ >> 17U;
  état_ ^= état_ << 5U;
  return static_cast<char>(état_ >> 24U);
}

std::uint32_t Hasard::Mot() {
  std::uint32_t mot = 0;
  for (int i = 0; i < 4; ++i) mot = mot << 8U | static_cast<unsigned char>(Octet());
  return mot;
}

std::size_t Hasard::Sous(std::size_t borne) {
  return Mot() % borne;
}

void Abîme(const Pannes& pannes, Hasard& hasard, Octets& octets) {
  if (octets.empty()) return;
  if (pannes.brouillée) {
    for (char& octet : octets) octet = hasard.Octet();
  }
  if (pannes.parasitée) Retourne(octets[octets.size() / 2], kUnBit);
  if (pannes.fausseSomme) Retourne(octets.back(), kUneErreur);
  if (pannes.coupée) octets.pop_back();
  AbîmeUnOctet(pannes, hasard, octets);
}

// Each fault has its own luck, and strikes what the one before has left.
void AbîmeUnOctet(const Pannes& pannes, Hasard& hasard, Octets& octets) {
  const auto frappe = [&](bool panne) {
    return panne && !octets.empty() && hasard.Sous(kUneFoisSur) == 0;
  };
  const auto place = [&] { return hasard.Sous(octets.size()); };
  if (frappe(pannes.perdante)) octets.erase(place(), 1);
  if (frappe(pannes.ajoutante)) octets.insert(place(), 1, hasard.Octet());
  if (frappe(pannes.retournante)) {
    Retourne(octets[place()], static_cast<char>(1U << hasard.Sous(8)));
  }
}

bool PannePrévue::FrappeLesCartes() const noexcept {
  const bool propre = genre == GenreDePanne::Rebond || genre == GenreDePanne::Blocage ||
                      genre == GenreDePanne::Mort;
  return lieu == LieuDePanne::Cartes || (lieu == LieuDePanne::Partout && propre);
}

std::vector<PannePrévue> TireLesPannes(const PannePrévue& cadre, std::uint32_t graine) {
  constexpr double kHeure = 3600;
  constexpr std::uint32_t kNuméro = 0x5EED;
  constexpr auto kNombre = static_cast<std::size_t>(GenreDePanne::Horloge) + 1;
  Hasard hasard = Hasard::De(graine, kNuméro);
  const auto entre = [&](double bas, double haut) {
    constexpr std::size_t kPas = 1000;
    return bas + (haut - bas) * static_cast<double>(hasard.Sous(kPas)) / kPas;
  };
  std::vector<PannePrévue> tirées;
  double heure = std::max(cadre.début, 0.0);
  const double fin = std::min(cadre.fin, heure + kHeure);
  for (heure += entre(0.5, 4); heure < fin; heure += entre(0.5, 4)) {
    PannePrévue panne = cadre;
    panne.genre = static_cast<GenreDePanne>(hasard.Sous(kNombre));
    panne.quantité = entre(-kHeure, kHeure);
    panne.début = heure;
    heure += entre(0.1, 3);
    panne.fin = std::min(heure, fin);
    tirées.push_back(panne);
  }
  return tirées;
}

void Ajoute(GenreDePanne genre, Pannes& pannes) {
  for (const auto& [connu, champ] : kGenres) {
    if (connu == genre) pannes.*champ = true;
  }
}

}  // namespace zuma::sim
