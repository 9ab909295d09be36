#include "host/champ_csv.h"

#include <array>
#include <charconv>

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

void AjouteNombre(std::string& ligne, double nombre) {
  std::array<char, 32> texte{};
  const auto fin = std::to_chars(texte.data(), texte.data() + texte.size(), nombre);
  ligne.append(texte.data(), fin.ptr);
}

}  // namespace zuma::host
