// A block of inputs that is read no more, told once, and once when it is read again.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "core/garde.h"
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

// The error indicator of a link is written by changes, and has no age.
const Canal* LePlusVieux(const Canals& canaux) {
  const Canal* vieux = nullptr;
  for (const CanalRef& canal : canaux) {
    if (canal->NuméroCanal() < 0 || !canal->EnService() || !canal->EstVieux()) continue;
    if (vieux == nullptr || canal->Age() > vieux->Age()) vieux = canal.Brut();
  }
  return vieux;
}

}  // namespace

// Told at the second look: one pass that waited long is no loss of what it reads last.
void Fonction::SurveilleSesLectures() {
  if (!EstUneEntrée(TypeDeFonction_) || !Enabled_ || !Canals_ || !Erreur()) return;
  const Canal* vieux = LePlusVieux(*Canals_);
  const double heure = LaPlateforme().heureDePasse;
  if (vieux == nullptr) {
    const auto perte = std::exchange(perte_, std::nullopt);
    if (!perte || !perte->dite) return;
    Consigne(*this, Forme::Méthode, "MetàJour",
             "Lectures du bloc " + Key() + " retrouvées après " + Secondes(heure - perte->depuis));
  } else if (!perte_) {
    perte_ = Perte{heure - vieux->Age(), false};
  } else if (!std::exchange(perte_->dite, true)) {
    Consigne(
        *this, Forme::Méthode, "MetàJour",
        "Lectures perdues : aucune de '" + vieux->Nom() + "' depuis " + Secondes(vieux->Age()));
  }
}

}  // namespace zuma
