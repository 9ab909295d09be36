// The table of the kinds: a new kind is one row here and its functions beside the others.
#include "sensors/capteur_genres.h"

#include <algorithm>
#include <array>

namespace zuma {

std::span<const Capteur::Genre> Capteur::Genre::Tous() {
  using T = ENUM_TYPE_CAPTEUR;
  using C = Calcul;
  static constexpr auto kValeur = &C::ExtrêmesDeLaValeur;
  static constexpr std::array<Genre, 14> kGenres{{
      {T::capteurNormal, "Normal", &C::Normal, kValeur, &C::PrendLesLimites, &C::RazDuCanal},
      {T::CapteurMoyen, "Moyen", &C::Moyen, kValeur},
      {T::CapteurRecouvrement, "Recouvrement", &C::Recouvrement, kValeur, nullptr, &C::RazDuPetit},
      {T::CapteurContrainte, "Contrainte", &C::Contrainte, &C::MaxiDeLaForce},
      {T::CapteurTemps, "Temps", &C::Temps, nullptr, &C::DémarreLaMontre, &C::RazDeLaMontre},
      {T::CapteurRégression, "Vitesse", &C::Vitesse, kValeur, &C::VideLaRégression},
      {T::CapteurDeltaL, "DeltaL/L", &C::DeltaL, &C::MaxiDeLAllongement},
      {T::CapteurCombinaison, "Combinaison", &C::Combinaison, kValeur},
      {T::CapteurSelectionnable, "Selectionnable", &C::Selectionnable, kValeur},
      {T::CapteurRéservé1, "Réservé 1", &C::Réservé1, nullptr, &C::DémarreRéservé1},
      {T::CapteurRéservé2, "Réservé 2", &C::Réservé2, nullptr, &C::DémarreRéservé2},
      {T::CapteurScout55, "Scout 55", &C::Scout55, nullptr, &C::DémarreScout55},
      {T::CapteurLvdtSolartron, "SOLARTRON LVDT"},  // its value is written from outside
      {T::CapteurLePlusPetit, "PPC", &C::LePlusPetit, kValeur, &C::ContrôleLesUnités,
       &C::RazDesFils},
  }};
  return kGenres;
}

const Capteur::Genre* Capteur::Genre::De(ENUM_TYPE_CAPTEUR type) {
  const auto genre = std::ranges::find(Tous(), type, &Genre::type);
  return genre == Tous().end() ? nullptr : &*genre;
}

const Capteur::Genre* Capteur::Genre::DeTexte(std::string_view texte) {
  const auto genre = std::ranges::find(Tous(), texte, &Genre::texte);
  return genre == Tous().end() ? nullptr : &*genre;
}

}  // namespace zuma
