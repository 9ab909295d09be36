#pragma once

#include <cstdint>

#include "base/valeur.h"
#include "tree/doute.h"
#include "tree/sorties_envoyees.h"

namespace zuma {

class Fonction;

/// State of one block's Modbus exchange, kept from pass to pass. Each block has its own: a dead
/// slave must raise its error channel even while its neighbours on the bus answer.
struct EchangeModbus {
  Octets question;                   ///< last request, with its CRC
  Octets réponse;                    ///< what was received of its answer
  double heureDEnvoi = 0;            ///< microseconds
  double heureDuDernierOctet = 0;    ///< received, in microseconds
  std::int32_t compteurErreurs = 0;  ///< failed exchanges in a row
  Doute doute;                       ///< of the block's slave, kept the same in all of its blocks
  SortiesEnvoyées sorties;           ///< of the last write
};

namespace echange_modbus {

/// One step of the exchange of a `DrvModBus` block: sends a request, or looks for the answer of
/// the one that is on the wire, for as long as the board's time-out says. Never waits. Ten failed
/// exchanges in a row set the block's error channel to -1, a good one sets it to 0; in between the
/// channels keep their values. A block whose slave is left alone behind a late answer sends nothing
/// but a stop (a set point that went to 0) until no such answer can come any more. A line that is
/// closed is opened anew every second.
///
/// In a write of all channels one without a value that a coil or register takes goes as 0, is told,
/// and never counts as reached.
///
/// A stop leaves with the next turn of its block: the time-out for each block of the bus at most.
/// Functions 5 and 6 write one channel a turn, so that a stop of several takes as many turns.
void Rafraîchit(Fonction& bloc);

}  // namespace echange_modbus
}  // namespace zuma
