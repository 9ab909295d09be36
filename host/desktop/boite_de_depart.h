#pragma once

#include "host/depart.h"
#include "host/desktop/textes.h"

namespace zuma::host {

/// Shows what a load or a start left and asks whether the frame is run all the same. No is what
/// Enter, Escape and a signal that ends the program answer.
[[nodiscard]] bool DemandeLeDépart(const DépartRefusé& refus, const Textes& textes);

/// Shows why a frame is not run.
void MontreLeRefus(const DépartRefusé& refus);

}  // namespace zuma::host
