#pragma once

#include <QColor>
#include <optional>
#include <string_view>

#include "sensors/capteur.h"

namespace zuma::host {

/// How a state is told: a sign and a word first, since not everybody sees the colour.
struct EtatAffiché {
  std::string_view clé;  ///< of the word
  std::string_view signe;
  QColor fond;   ///< none: the usual one
  QColor encre;  ///< none: the usual one
};

[[nodiscard]] const EtatAffiché& EtatDe(const Capteur& capteur);

/// The reading; none from a sensor out of service, not selected, below its valid readings, or whose
/// value is no number: those are gaps, and never 0.
[[nodiscard]] std::optional<double> LectureDe(const Capteur& capteur);

}  // namespace zuma::host
