#pragma once

#include <functional>

#include "host/avancement.h"
#include "host/problemes.h"
#include "platform/linux/base_sqlite.h"
#include "platform/linux/schema.h"
#include "tree/registre_des_drivers.h"

namespace zuma::host {

/// True for the rows whose problems are told.
using LignesVérifiées = std::function<bool(const linux_::TableDuSchéma&, const Recordset&)>;

/// Compares every row of the database with what the system reads from it: tables and columns that
/// are missing, values of another type, texts that select nothing in `drivers`, keys and links that
/// are there twice and references to rows that are not. Tells more than a load does, which passes
/// over most of it. All rows are looked at without `lesquelles`. `avancement`, where there is one,
/// hears how far it has come.
void VérifieLesDonnées(BaseDeDonnées& base, const RegistreDesDrivers& drivers, Recueil& recueil,
                       LignesVérifiées lesquelles = {}, Avancement* avancement = nullptr);

}  // namespace zuma::host
