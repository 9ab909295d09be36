#pragma once

#include <string>
#include <string_view>

#include "platform/collaborateurs.h"

namespace zuma {

/// Gives a shared parameter the text `texte` unless it has it already: its listeners hear of
/// changes only, and a pass in which nothing changes allocates nothing. `tampon` keeps its room
/// from one pass to the next.
inline void Publie(ZED_Parametre& paramètre, std::string_view texte, std::string& tampon) {
  if (paramètre.LitValeur(tampon) != texte) paramètre.ValeurParamètre(std::string(texte));
}

}  // namespace zuma
