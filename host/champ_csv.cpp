#include "host/champ_csv.h"

namespace zuma::host {

std::string ChampCsv(std::string_view texte) {
  constexpr std::string_view kFormules = "=+-@\t\r";
  std::string champ;
  if (!texte.empty() && kFormules.find(texte.front()) != std::string_view::npos) champ = "'";
  for (const char c : texte) champ += static_cast<unsigned char>(c) < ' ' || c == '\x7f' ? ' ' : c;
  // The semicolon too: a spreadsheet with French settings separates by it.
  if (champ.find_first_of(",;\"") == std::string::npos) return champ;
  std::string cité = "\"";
  for (const char c : champ) {
    if (c == '"') cité += '"';
    cité += c;
  }
  return cité + "\"";
}

}  // namespace zuma::host
