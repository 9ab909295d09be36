#include "sim/pannes.h"

#include <array>
#include <utility>

namespace zuma::sim {
namespace {

constexpr std::size_t kBavardage = 3;  // bytes on each read of a line that babbles
constexpr char kUnBit = 0x10;
constexpr char kUneErreur = 0x55;

constexpr std::array<std::pair<GenreDePanne, bool Pannes::*>, 8> kGenres{{
    {GenreDePanne::Silence, &Pannes::muette},
    {GenreDePanne::Brouillage, &Pannes::brouillée},
    {GenreDePanne::FausseSomme, &Pannes::fausseSomme},
    {GenreDePanne::Coupure, &Pannes::coupée},
    {GenreDePanne::Babillage, &Pannes::babillarde},
    {GenreDePanne::Débranchement, &Pannes::débranchée},
    {GenreDePanne::Retard, &Pannes::tardive},
    {GenreDePanne::Figement, &Pannes::figée},
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

void Abîme(const Pannes& pannes, Hasard& hasard, Octets& octets) {
  if (pannes.muette) octets.clear();
  if (pannes.babillarde) {
    for (std::size_t i = 0; i < kBavardage; ++i) octets += hasard.Octet();
  }
  if (octets.empty()) return;
  if (pannes.brouillée) {
    for (char& octet : octets) octet = hasard.Octet();
  }
  if (pannes.parasitée) Retourne(octets[octets.size() / 2], kUnBit);
  if (pannes.fausseSomme) Retourne(octets.back(), kUneErreur);
  if (pannes.coupée) octets.pop_back();
}

void Ajoute(GenreDePanne genre, Pannes& pannes) {
  for (const auto& [connu, champ] : kGenres) {
    if (connu == genre) pannes.*champ = true;
  }
}

}  // namespace zuma::sim
