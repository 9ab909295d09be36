#include "dialogs/affichage_court.h"

#include <array>
#include <charconv>
#include <cmath>

#include "base/valeur.h"

namespace zuma {
namespace {

constexpr std::size_t kCaractères = 6;
constexpr int kDécimales = 6;

// At most six decimals, and the comma even where none is left.
std::string AvecVirgule(double valeur) {
  std::array<char, 352> texte;  // the largest double has 309 integer digits
  const auto fin =
      std::to_chars(texte.begin(), texte.end(), valeur, std::chars_format::fixed, kDécimales);
  std::string s(texte.data(), fin.ptr);
  s.erase(s.find_last_not_of('0') + 1);
  s[s.find('.')] = ',';
  return s == "-0," ? "0," : s;
}

}  // namespace

std::string AffichageCourt(double valeur) {
  if (!std::isfinite(valeur)) return TexteDeNombre(valeur);
  std::string s = AvecVirgule(valeur);
  const std::size_t virgule = s.find(',');
  s.resize(virgule < kCaractères ? std::min(kCaractères, s.size()) : virgule + 1);
  if (s.back() == ',') s.pop_back();
  return s;
}

}  // namespace zuma
