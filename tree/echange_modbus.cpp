#include "tree/echange_modbus.h"

#include "core/echec.h"

namespace zuma::echange_modbus {

void Rafraîchit(Fonction&) {
  throw Echec(Numéro::PasConstruit);
}

}  // namespace zuma::echange_modbus
