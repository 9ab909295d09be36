#include "sensors/lecture.h"

#include <cmath>

namespace zuma {

std::optional<double> LectureDe(const Capteur& capteur) {
  constexpr auto kNonValide = static_cast<std::int16_t>(ENUM_ETAT_CAPTEUR::LectureNonValide);
  if (!capteur.Enabled_bln() || !capteur.CapteurSelectionne() || capteur.Etat() == kNonValide ||
      !capteur.EstLu()) {
    return {};
  }
  const double valeur = capteur.ValeurCourante();
  return std::isfinite(valeur) ? std::optional(valeur) : std::nullopt;
}

bool EstAncien(const Capteur& capteur) {
  return capteur.Enabled_bln() && capteur.CapteurSelectionne() && capteur.EstVieux();
}

}  // namespace zuma
