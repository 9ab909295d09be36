#include "sim/laser_simule.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sim/journal_borne.h"

namespace zuma::sim {
namespace {

struct Drapeau {
  char lettre;
  bool LaserSimulé::* champ;
};
constexpr std::array<Drapeau, 3> kDrapeaux{
    {{'L', &LaserSimulé::laser}, {'E', &LaserSimulé::écho}, {'Z', &LaserSimulé::zéro}}};

struct Texte {
  char lettre;
  Octets LaserSimulé::* champ;
};
constexpr std::array<Texte, 3> kTextes{
    {{'U', &LaserSimulé::unité}, {'T', &LaserSimulé::distance}, {'M', &LaserSimulé::type}}};

template <class Table>
auto Cherche(const Table& table, char lettre) {
  const auto ligne = std::ranges::find(table, lettre, &Table::value_type::lettre);
  return ligne == table.end() ? nullptr : ligne->champ;
}

constexpr double kPlusPetit = -0x800000;
constexpr double kPlusGrand = 0x7FFFFE;
constexpr std::uint32_t kPasDeMesure = 0x7FFFFF;

}  // namespace

void LaserSimulé::Reçoit(std::string_view octets, LigneSérie& ligne) {
  Note(entrée_, octets);
  for (auto fin = entrée_.find('\r'); fin != Octets::npos; fin = entrée_.find('\r')) {
    const Octets réponse = Répond(std::string_view(entrée_).substr(0, fin));
    entrée_.erase(0, fin + 1);
    if (réponse.empty()) continue;
    ligne.Emet(réponseForcée.empty() ? réponse : réponseForcée, latence);
  }
}

Octets LaserSimulé::Répond(std::string_view demande) {
  if (demande.empty()) return {};
  if (demande == "B") return Mesure();
  if (demande.size() == 1) return Lit(demande.front());
  return Ecrit(demande.front(), demande.substr(1)) ? ":" : "";
}

bool LaserSimulé::Ecrit(char lettre, std::string_view valeur) {
  if (auto texte = Cherche(kTextes, lettre)) {
    this->*texte = valeur;
    return true;
  }
  auto drapeau = Cherche(kDrapeaux, lettre);
  if (drapeau == nullptr || (valeur != "0" && valeur != "1")) return false;
  this->*drapeau = valeur == "1";
  if (lettre == 'Z') origine_ = zéro ? extension : 0;
  return true;
}

Octets LaserSimulé::Lit(char lettre) const {
  if (auto texte = Cherche(kTextes, lettre)) return lettre + this->*texte + ":";
  auto drapeau = Cherche(kDrapeaux, lettre);
  if (drapeau == nullptr) return {};
  return Octets(1, lettre) + (this->*drapeau ? "0:" : "1:");
}

// Three bytes, the least significant first.
Octets LaserSimulé::Mesure() const {
  std::uint32_t points = kPasDeMesure;
  if (laser && cibleVue) {
    const double borné = std::clamp(std::round(extension - origine_), kPlusPetit, kPlusGrand);
    points = static_cast<std::uint32_t>(static_cast<std::int32_t>(borné));
  }
  Octets octets;
  for (unsigned décalage = 0; décalage < 24; décalage += 8) {
    octets += static_cast<char>(points >> décalage & 0xFFU);
  }
  return octets;
}

}  // namespace zuma::sim
