#pragma once

#include <cstdint>
#include <limits>

#include "commands/commande.h"
#include "logic/entree_logique.h"
#include "logic/sortie_logique.h"
#include "logic/watchdog.h"
#include "publication/lecture/lecteur.h"
#include "sensors/capteur.h"
#include "tree/canal.h"

// What is to be told of an object now: the same for a sample and for whoever holds the object. Told
// for each object of each sample, and therefore in sight of who writes them.
namespace zuma::publication {

/// What stands for a reading that is not there.
inline constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

/// That bit of a state, or none.
[[nodiscard]] inline std::uint32_t Bits(bool vrai, Etat bit) {
  return static_cast<std::uint32_t>(vrai) * bit;  // a shift, and no choice
}

/// 1 for on, 0 for off, no number for a source that tells nothing: as people plot it.
[[nodiscard]] inline double NiveauDe(ENUM_ETAT_LOGIQUE état) {
  if (état == ENUM_ETAT_LOGIQUE::Actif) return 1;
  return état == ENUM_ETAT_LOGIQUE::Inactif ? 0 : kAbsent;
}

///@{
/// Value, age and state of an object.
[[nodiscard]] inline Mesure MesureDe(const Capteur& capteur) {
  constexpr auto kNonValide = static_cast<std::int16_t>(ENUM_ETAT_CAPTEUR::LectureNonValide);
  const Capteur::AgeDeMesure âge = capteur.LAge();
  // Without branches: all of it lies in the same two lines of the cache.
  const unsigned lisible = unsigned{capteur.Enabled_bln()} &
                           unsigned{capteur.CapteurSelectionne()} & unsigned{âge.lue} &
                           unsigned{capteur.Etat() != kNonValide};
  return {lisible != 0 ? capteur.ValeurCourante() : kAbsent, âge.secondes,
          Bits(capteur.Enabled_bln(), kEnService) | Bits(âge.lue, kLu) | Bits(âge.vieux, kVieux) |
              Bits(capteur.CapteurSelectionne(), kSélectionné) | Bits(capteur.AU(), kSorti) |
              (static_cast<std::uint32_t>(capteur.Etat()) << kDécalageDeLEtat)};
}

[[nodiscard]] inline Mesure MesureDe(const Commande& commande) {
  return {commande.ValeurCouranteEnUnité(), 0,
          Bits(commande.Enabled(), kEnService) | Bits(commande.Atteinte(), kAtteint) |
              Bits(commande.MaintenueAuRepos(), kMaintenu) |
              Bits(commande.SortieSaturée(), kSaturé)};
}

[[nodiscard]] inline Mesure MesureDe(const EntréeLogique& entrée) {
  return {NiveauDe(entrée.ValeurCourante()), 0, 0};
}

[[nodiscard]] inline Mesure MesureDe(const SortieLogique& sortie) {
  return {NiveauDe(sortie.ValeurCourante()), 0, Bits(sortie.Atteinte(), kAtteint)};
}

[[nodiscard]] inline Mesure MesureDe(const Watchdog& chien) {
  return {chien.Temps(), 0,
          Bits(chien.Enabled(), kEnService) | Bits(chien.ArrêtAtteint(), kAtteint) |
              Bits(chien.EnArrêt(), kEnArrêt)};
}

[[nodiscard]] inline Mesure MesureDe(const Canal& canal) {
  return {canal.ValeurCanal(), canal.Age(),
          Bits(canal.EnService(), kEnService) | Bits(canal.EstLu(), kLu) |
              Bits(canal.EstVieux(), kVieux) | Bits(canal.Atteint(), kAtteint)};
}
///@}

}  // namespace zuma::publication
