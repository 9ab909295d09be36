#pragma once

#include "platform/linux/connexion_sqlite.h"

namespace zuma::linux_ {

/// Puts indexed copies in memory in front of the large tables that a load asks for row by row and
/// that their file has no index for: each question would read the whole table otherwise. They have
/// the names, columns and types of the originals, and go away with the transaction that they were
/// made in. Nothing is written meanwhile.
void CopieLesGrandesTables(ConnexionSqlite& connexion);

}  // namespace zuma::linux_
