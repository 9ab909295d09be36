#pragma once

#include "tree/carte.h"
#include "tree/ligne_driver.h"

/// Board operations that need nothing but the board's own link.
namespace zuma::opérations_arbre {

/// Hands the board's line to the Modbus blocks that were given none of their own, and opens it.
/// In this order: on a port that is missing a block then says so, on each exchange.
inline void OuvreLigneSérie(Carte& carte) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->LeDriver().surLaLigneDeLaCarte && !bloc->RS()) bloc->RS(carte.RS());
  }
  carte.OuvreLigneSérie();
}

/// Operations of a board that is a serial line: opens it.
inline constexpr OpérationsCarte kLigneSérie{.démarre = &OuvreLigneSérie};

}  // namespace zuma::opérations_arbre
