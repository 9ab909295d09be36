#include "publication/mesures.h"

#include <limits>

namespace zuma::publication {
namespace {

constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();

std::uint32_t Bits(bool vrai, Etat bit) {
  return vrai ? bit : 0U;
}

}  // namespace

double NiveauDe(ENUM_ETAT_LOGIQUE état) {
  if (état == ENUM_ETAT_LOGIQUE::Actif) return 1;
  return état == ENUM_ETAT_LOGIQUE::Inactif ? 0 : kAbsent;
}

Mesure MesureDe(const Capteur& capteur) {
  constexpr auto kNonValide = static_cast<std::int16_t>(ENUM_ETAT_CAPTEUR::LectureNonValide);
  const Capteur::AgeDeMesure âge = capteur.LAge();
  const bool lisible = capteur.Enabled_bln() && capteur.CapteurSelectionne() && âge.lue &&
                       capteur.Etat() != kNonValide;
  return {lisible ? capteur.ValeurCourante() : kAbsent, âge.secondes,
          Bits(capteur.Enabled_bln(), kEnService) | Bits(âge.lue, kLu) | Bits(âge.vieux, kVieux) |
              Bits(capteur.CapteurSelectionne(), kSélectionné) | Bits(capteur.AU(), kSorti) |
              (static_cast<std::uint32_t>(capteur.Etat()) << kDécalageDeLEtat)};
}

Mesure MesureDe(const Commande& commande) {
  return {commande.ValeurCouranteEnUnité(), 0,
          Bits(commande.Enabled(), kEnService) | Bits(commande.Atteinte(), kAtteint) |
              Bits(commande.MaintenueAuRepos(), kMaintenu) |
              Bits(commande.SortieSaturée(), kSaturé)};
}

Mesure MesureDe(const EntréeLogique& entrée) {
  return {NiveauDe(entrée.ValeurCourante()), 0, 0};
}

Mesure MesureDe(const SortieLogique& sortie) {
  return {NiveauDe(sortie.ValeurCourante()), 0, Bits(sortie.Atteinte(), kAtteint)};
}

Mesure MesureDe(const Watchdog& chien) {
  return {chien.Temps(), 0,
          Bits(chien.Enabled(), kEnService) | Bits(chien.ArrêtAtteint(), kAtteint) |
              Bits(chien.EnArrêt(), kEnArrêt)};
}

Mesure MesureDe(const Canal& canal) {
  return {canal.ValeurCanal(), canal.Age(),
          Bits(canal.EnService(), kEnService) | Bits(canal.EstLu(), kLu) |
              Bits(canal.EstVieux(), kVieux) | Bits(canal.Atteint(), kAtteint)};
}

}  // namespace zuma::publication
