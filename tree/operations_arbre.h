#pragma once

#include "tree/carte.h"
#include "tree/driver_table.h"

/// Board operations that need nothing but the board's own link.
namespace zuma::opérations_arbre {

inline void OuvreLigneSérie(Carte& carte) {
  carte.OuvreLigneSérie();
}

inline constexpr OpérationsCarte kLigneSérie{.démarre = &OuvreLigneSérie};

}  // namespace zuma::opérations_arbre
