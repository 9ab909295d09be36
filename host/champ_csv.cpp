#include "host/champ_csv.h"

#include "platform/linux/texte_ligne.h"

namespace zuma::host {

std::string ChampCsv(std::string_view texte) {
  constexpr std::string_view kFormules = "=+-@\t\r";
  std::string champ;
  if (!texte.empty() && kFormules.find(texte.front()) != std::string_view::npos) champ = "'";
  champ += linux_::UneSeuleLigne(texte);
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
