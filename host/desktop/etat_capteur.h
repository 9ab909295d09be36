#pragma once

#include <QColor>
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

}  // namespace zuma::host
