#pragma once

#include "tree/ligne_driver.h"

/// Operations of the boards that hold an instrument or a drive.
namespace zuma::instruments {

///@{
/// Start, exchange and maintenance form of the boards of each driver.
extern const OpérationsCarte kVariateurLS;
extern const OpérationsCarte kThumler;
extern const OpérationsCarte kLaserEIR;
extern const OpérationsCarte kTesteurCBR;
extern const OpérationsCarte kBalanceGram;
extern const OpérationsCarte kSpider;
extern const OpérationsCarte kConditionneurK9;
extern const OpérationsCarte kConditionneurK9V1;
///@}

}  // namespace zuma::instruments
