#pragma once

#include <string_view>

namespace zuma {

/// Journal of failed Modbus exchanges, one line each; started afresh when a board is built. The
/// path is part of the interface: the platform's file service maps it to a real folder.
inline constexpr std::string_view kJournalModbus = "c:\\K9\\Ordaxo\\journaux\\Erreur Modbus.txt";

}  // namespace zuma
