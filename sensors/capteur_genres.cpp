// The table of the kinds: a new kind is one row here and its functions beside the others.
#include "sensors/capteur_genres.h"

#include <algorithm>
#include <array>

namespace zuma {

std::span<const Capteur::Genre> Capteur::Genre::Tous() {
  using T = ENUM_TYPE_CAPTEUR;
  using C = Calcul;
  static constexpr auto kValeur = &C::ExtrêmesDeLaValeur;
  static constexpr auto kFils = &C::AgeDesFils;
  static constexpr auto kSien = &C::AgeDeLInstrument;
  static constexpr std::array<Genre, 14> kGenres{{
      {T::capteurNormal, "Normal", &C::Normal, kValeur, &C::PrendLesLimites, &C::RazDuCanal,
       &C::AgeDuCanal},
      {T::CapteurMoyen, "Moyen", &C::Moyen, kValeur, nullptr, nullptr, kFils},
      {T::CapteurRecouvrement, "Recouvrement", &C::Recouvrement, kValeur, nullptr, &C::RazDuPetit,
       kFils},
      {T::CapteurContrainte, "Contrainte", &C::Contrainte, &C::MaxiDeLaForce, nullptr, nullptr,
       kFils},
      {T::CapteurTemps, "Temps", &C::Temps, nullptr, &C::DémarreLaMontre, &C::RazDeLaMontre},
      {T::CapteurRégression, "Vitesse", &C::Vitesse, kValeur, &C::VideLaRégression, nullptr, kFils},
      {T::CapteurDeltaL, "DeltaL/L", &C::DeltaL, &C::MaxiDeLAllongement, nullptr, nullptr, kFils},
      {T::CapteurCombinaison, "Combinaison", &C::Combinaison, kValeur, nullptr, nullptr, kFils},
      {T::CapteurSelectionnable, "Selectionnable", &C::Selectionnable, kValeur, nullptr, nullptr,
       kFils},
      {T::CapteurRéservé1, "Réservé 1", &C::Réservé1, nullptr, &C::DémarreRéservé1, nullptr, kSien},
      {T::CapteurRéservé2, "Réservé 2", &C::Réservé2, nullptr, &C::DémarreRéservé2, nullptr, kSien},
      {T::CapteurScout55, "Scout 55", &C::Scout55, nullptr, &C::DémarreScout55, nullptr, kSien},
      // Its value is written from outside.
      {T::CapteurLvdtSolartron, "SOLARTRON LVDT", nullptr, nullptr, nullptr, nullptr,
       &C::AgeDuDehors},
      {T::CapteurLePlusPetit, "PPC", &C::LePlusPetit, kValeur, &C::ContrôleLesUnités,
       &C::RazDesFils, kFils},
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
