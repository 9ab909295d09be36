#pragma once

#include "tree/carte.h"

/// LVDT probes on an Orbit network (driver 301). The board connects to the network, each channel
/// names the module that it reads by its serial number.
namespace zuma::orbit {

/// Connects to the network and takes their addresses from its modules. A network without module is
/// told in the error record and the start goes on. Blocks for half a second.
void DémarreCarte(Carte& carte);
/// Gives the channel's module its address. A module that does not take it leaves the channel out of
/// service, with the value that it had, and is told once.
void DémarreCanal(Canal& canal);
/// Reads one channel of the block, the one after that of the last refresh.
void RafraîchitBloc(Fonction& bloc);
/// Mean of `NbLecture` readings. A module that does not answer makes the whole board start anew, in
/// the pass: half a second for the network, and the start of every block of the board.
void LitCanal(Canal& canal);

}  // namespace zuma::orbit
