#pragma once

#include <string>
#include <string_view>

namespace zuma::linux_ {

/// A statement of the system's own dialect as SQLite understands it. Three things differ:
/// `[Table]![Column]` becomes `[Table].[Column]`, `= ANY (` becomes `IN (`, and a number that runs
/// into a word (`12AND`) gets the blank that SQLite wants there. Names in brackets, quoted names
/// and texts pass untouched, whatever they hold; what is open stays open, and SQLite refuses it.
[[nodiscard]] std::string TraduitPourSqlite(std::string_view instruction);

}  // namespace zuma::linux_
