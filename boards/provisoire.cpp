#include "boards/operations.h"

namespace zuma::pilotes {

const OpérationsPilote kPCL731Entrées{};
const OpérationsPilote kPCL731Sorties{};
const OpérationsPilote kPET48EntréesTB24{};
const OpérationsPilote kPET48EntréesPCLD{};
const OpérationsPilote kPET48SortiesTB24{};
const OpérationsPilote kPET48SortiesPCLD{};
const OpérationsPilote kACL8316Entrées{};
const OpérationsPilote kACL8316Sorties{};
const OpérationsPilote kACL8316Analogique{};
const OpérationsPilote kACL8316SortiesAnalogiques{};
const OpérationsPilote kA826Entrées{};
const OpérationsPilote kA826Sorties{};
const OpérationsPilote kA826Analogique{};
const OpérationsPilote kA826SortiesAnalogiques{};
const OpérationsPilote kACL6126Entrées{};
const OpérationsPilote kACL6126Sorties{};
const OpérationsPilote kACL6126SortiesAnalogiques{};
const OpérationsPilote kPCL813Analogique{};
const OpérationsPilote kACL8113Analogique{};
const OpérationsPilote kPCL728Sorties{};
const OpérationsPilote kACL6128Sorties{};
const OpérationsCarte kPET48Carte{};

}  // namespace zuma::pilotes
