#pragma once

#include "tree/driver_table.h"

/// Operations of the port-mapped boards, one record for each driver value that selects them.
namespace zuma::pilotes {

extern const OpérationsPilote kPCL731Entrées;
extern const OpérationsPilote kPCL731Sorties;
extern const OpérationsPilote kPET48EntréesTB24;
extern const OpérationsPilote kPET48EntréesPCLD;
extern const OpérationsPilote kPET48SortiesTB24;
extern const OpérationsPilote kPET48SortiesPCLD;
extern const OpérationsPilote kACL8316Entrées;
extern const OpérationsPilote kACL8316Sorties;
extern const OpérationsPilote kACL8316Analogique;
extern const OpérationsPilote kACL8316SortiesAnalogiques;
extern const OpérationsPilote kA826Entrées;
extern const OpérationsPilote kA826Sorties;
extern const OpérationsPilote kA826Analogique;
extern const OpérationsPilote kA826SortiesAnalogiques;
extern const OpérationsPilote kACL6126Entrées;
extern const OpérationsPilote kACL6126Sorties;
extern const OpérationsPilote kACL6126SortiesAnalogiques;
extern const OpérationsPilote kPCL813Analogique;
extern const OpérationsPilote kACL8113Analogique;
extern const OpérationsPilote kPCL728Sorties;
extern const OpérationsPilote kACL6128Sorties;

/// Board-level start of the PET 48 DIO family.
extern const OpérationsCarte kPET48Carte;

}  // namespace zuma::pilotes
