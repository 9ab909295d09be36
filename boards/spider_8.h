#pragma once

#include "tree/fonction.h"

/// Measuring amplifier read block by block (driver 30204). The block's channels take those of the
/// amplifier in their order, the first one channel 0, whatever their numbers.
namespace zuma::spider_8 {

/// Opens the amplifier, sets its channels up for measuring and tares them. What the library answers
/// is not looked at: an amplifier that is not there leaves the values as they are.
void Démarre(Fonction& bloc);
/// Measures once, for as long as a conversion takes, and hands each channel its value. A block with
/// more channels than at its start fails with 9.
void Rafraîchit(Fonction& bloc);
/// Closes the amplifier that this block opened.
void Termine(Fonction& bloc) noexcept;

}  // namespace zuma::spider_8
