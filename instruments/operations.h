#pragma once

#include "tree/driver_table.h"

/// Operations of the boards that hold an instrument or a drive.
namespace zuma::instruments {

extern const OpérationsCarte kVariateurLS;
extern const OpérationsCarte kThumler;

}  // namespace zuma::instruments
