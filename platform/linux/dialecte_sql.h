#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zuma::linux_ {

/// A statement of the system's own dialect as SQLite understands it. Three things differ:
/// `[Table]![Column]` becomes `[Table].[Column]`, `= ANY (` becomes `IN (`, and a number that runs
/// into a word (`12AND`) gets the blank that SQLite wants there. Names in brackets, quoted names
/// and texts pass untouched, whatever they hold; what is open stays open, and SQLite refuses it.
[[nodiscard]] std::string TraduitPourSqlite(std::string_view instruction);

/// What statements that differ in their numbers alone have in common, and the numbers.
struct FormeDInstruction {
  std::string texte;                  ///< the statement, "?" in the place of each number
  std::vector<std::int64_t> nombres;  ///< in their order
};

/// Takes the whole numbers behind an "=" out of a statement of either dialect. One that holds
/// parameters of its own, or what may begin a comment, stays as it is.
[[nodiscard]] FormeDInstruction SépareLesNombres(std::string_view instruction);

}  // namespace zuma::linux_
