// A block of inputs that is read no more, told once, and once when it is read again.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "base/garde.h"
#include "tree/carte.h"
#include "tree/fonction.h"

namespace zuma {
namespace {

bool EstUneEntrée(ENUM_TYPE_FONCTION type) {
  return type == ENUM_TYPE_FONCTION::FctEntréesLogiques ||
         type == ENUM_TYPE_FONCTION::FctEntréesAnalogiques;
}

std::string Secondes(double durée) {
  std::array<char, 32> texte{};
  std::snprintf(texte.data(), texte.size(), "%.1f s", durée);
  return texte.data();
}

// What is told of the channels of a block at one look, in one entry.
struct Annonce {
  const Canal* premier = nullptr;
  double durée = 0;
  int autres = -1;

  void Ajoute(const Canal& canal, double depuis) {
    if (premier == nullptr) premier = &canal;
    durée = std::max(durée, depuis);
    ++autres;
  }
  [[nodiscard]] std::string Autres() const {
    return autres > 0 ? " et " + std::to_string(autres) + " voie(s) de plus" : "";
  }
};

}  // namespace

// The error indicator of a link is written by changes, and has no age. Each entry bears a number:
// a record may keep one text once, and the next loss would not be told.
void Fonction::SurveilleSesLectures() {
  if (!EstUneEntrée(TypeDeFonction_) || !Enabled_ || !Canals_ || !Erreur()) return;
  Annonce perdues;
  Annonce retrouvées;
  for (const CanalRef& canal : *Canals_) {
    if (canal->NuméroCanal() < 0 || !canal->EnService()) continue;
    double durée = 0;
    const Canal::Suite suite = canal->Regarde(durée);
    if (suite == Canal::Suite::Perdue) perdues.Ajoute(*canal, durée);
    if (suite == Canal::Suite::Retrouvée) retrouvées.Ajoute(*canal, durée);
  }
  if (perdues.premier != nullptr) {
    Consigne(*this, Forme::Méthode, "MetàJour",
             "Lectures perdues : aucune de '" + perdues.premier->Nom() + "'" + perdues.Autres() +
                 " depuis " + Secondes(perdues.durée) + " (n° " + std::to_string(++annonces_) +
                 ")");
  }
  if (retrouvées.premier != nullptr) {
    Consigne(*this, Forme::Méthode, "MetàJour",
             "Lectures de '" + retrouvées.premier->Nom() + "'" + retrouvées.Autres() +
                 " retrouvées après " + Secondes(retrouvées.durée) + " (n° " +
                 std::to_string(++annonces_) + ")");
  }
}

}  // namespace zuma
