#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sim/pannes.h"

namespace zuma::host {

/// Reads `KIND[:WHERE][@FROM[-TO]]`, the kinds being those of the table in the README and "random",
/// which draws faults of all kinds by `graine`; where "all" (lines and CAN, or the boards for what
/// only boards have), "can", "usb", "boards", the number of a serial port or, behind "0x", the base
/// of a board; seconds after the first pass. Without seconds the fault is there before the start
/// already. Throws `MauvaisUsage` with what was expected.
[[nodiscard]] std::vector<sim::PannePrévue> LitLesPannes(std::string_view texte,
                                                         std::uint32_t graine);

/// The word for a kind of fault.
[[nodiscard]] std::string_view NomDePanne(sim::GenreDePanne genre);

/// The kind that follows in the list of those that can be put on at any time; none after the last
/// one.
[[nodiscard]] bool PanneSuivante(sim::GenreDePanne& genre);

}  // namespace zuma::host
