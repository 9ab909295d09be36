#pragma once

#include "tree/carte.h"
#include "tree/driver_table.h"

/// Board operations that need nothing but the board's own link.
namespace zuma::opérations_arbre {

/// Opens the board's line and hands it to the Modbus blocks that were given none of their own.
inline void OuvreLigneSérie(Carte& carte) {
  carte.OuvreLigneSérie();
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->Driver_enm() == ENUM_DRIVER::DrvModBus && !bloc->RS()) bloc->RS(carte.RS());
  }
}

inline constexpr OpérationsCarte kLigneSérie{.démarre = &OuvreLigneSérie};

}  // namespace zuma::opérations_arbre
