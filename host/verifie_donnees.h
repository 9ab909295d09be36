#pragma once

#include "host/problemes.h"
#include "platform/linux/base_sqlite.h"

namespace zuma::host {

/// Compares every row of the database with what the system reads from it: tables and columns that
/// are missing, values of another type, texts that select nothing, keys that are there twice and
/// references to rows that are not. Tells more than a load does, which passes over most of it.
void VérifieLesDonnées(BaseDeDonnées& base, Recueil& recueil);

}  // namespace zuma::host
