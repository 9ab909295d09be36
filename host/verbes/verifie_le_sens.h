#pragma once

#include "host/problemes.h"
#include "platform/base_de_donnees.h"
#include "platform/collaborateurs.h"

namespace zuma::host {

/// Looks for what loads without a word and does not do what was meant, in all rows of the database:
/// calibration tables, limits, filters, Modbus blocks, drives, rulers, outputs, names. Linear in
/// the rows. `paramètres`: those that sensors refer to; Nothing for none.
void VérifieLeSens(BaseDeDonnées& base, const ParamètresRef& paramètres, Recueil& recueil);

}  // namespace zuma::host
