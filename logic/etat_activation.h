#pragma once

#include "logic/enumerations.h"
#include "platform/base_de_donnees.h"

namespace zuma {

/// Reads column "Etat d'Activation", the level of a channel that means active: 0 is low, 1 high;
/// anything else leaves `haut` as it is. A missing column fails with 3265.
void LitEtatDActivation(const Recordset& ligne, bool& haut);

/// Value of a logic channel, 0 or -1, for a state, by the polarity.
[[nodiscard]] constexpr double NiveauLogique(bool actif, bool haut) noexcept {
  return actif == haut ? static_cast<double>(kVrai) : 0.0;
}

}  // namespace zuma
