#pragma once

#include <string>
#include <string_view>

#include "sim/pannes.h"

namespace zuma::host {

/// Reads KIND[:WHERE][@FROM[-TO]]: kind "silence", "garbage", "crc", "cut", "babble", "unplug",
/// "late" or "stuck"; where "all" (lines and CAN), "can", "usb" or the number of a serial port;
/// seconds after the start. Throws `MauvaisUsage` with what was expected.
[[nodiscard]] sim::PannePrévue LitLaPanne(std::string_view texte);

/// The word for a kind of fault.
[[nodiscard]] std::string_view NomDePanne(sim::GenreDePanne genre);

/// The kind that follows in the list of kinds; none after the last one.
[[nodiscard]] bool PanneSuivante(sim::GenreDePanne& genre);

}  // namespace zuma::host
