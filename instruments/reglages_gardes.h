#pragma once

#include <string>

#include "base/garde.h"
#include "tree/carte.h"

namespace zuma::instruments {

/// Writes the settings that an instrument ended up with to the board's row, none when they are
/// empty. A row that cannot be written is told in the error record, and the start goes on.
inline void GardeLesRéglages(Carte& carte, const std::string& réglages) {
  if (réglages.empty()) return;
  Garde(carte, Forme::Méthode, "Initialise", [&] { carte.EnregistreConfiguration(réglages); });
}

}  // namespace zuma::instruments
