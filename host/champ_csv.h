#pragma once

#include <string>
#include <string_view>

namespace zuma::host {

/// A name as one field of a CSV file (RFC 4180): quoted when it holds a separator or a quote. A
/// line end or another control character becomes a blank, so that a header is one line. A
/// spreadsheet must not compute what was only a name: one that begins as a formula would gets an
/// apostrophe before.
[[nodiscard]] std::string ChampCsv(std::string_view texte);

/// Appends a number with as many digits as it needs to come back as it is, and no more.
void AjouteNombre(std::string& ligne, double nombre);

}  // namespace zuma::host
