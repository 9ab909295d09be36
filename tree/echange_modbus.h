#pragma once

#include <cstdint>

#include "core/valeur.h"

namespace zuma {

class Fonction;

/// State of one block's Modbus exchange, kept from pass to pass.
struct EchangeModbus {
  Octets question;
  Octets réponse;
  double heureDEnvoi = 0;            ///< microseconds
  std::int32_t compteurErreurs = 0;  ///< failed exchanges in a row
};

namespace echange_modbus {

/// One step of the exchange of a `DrvModBus` block: sends a request, or looks for the answer of
/// the one that is on the wire. Never waits. Ten failed exchanges in a row set the block's error
/// channel to -1, a good one sets it to 0; in between the channels keep their values.
void Rafraîchit(Fonction& bloc);

}  // namespace echange_modbus
}  // namespace zuma
