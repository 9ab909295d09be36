#include "platform/linux/texte_ligne.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "platform/linux/utf8.h"

namespace zuma::linux_ {
namespace {

constexpr std::string_view kRemplacement = "\uFFFD";

// First and last character, as UTF-8, of what a terminal obeys or shows elsewhere than it stands.
using Plage = std::pair<std::string_view, std::string_view>;
constexpr std::array kCommandes{
    Plage{std::string_view("\0", 1), "\x1F"},  // controls
    Plage{"\x7F", "\x7F"},                     // delete
    Plage{"\xC2\x80", "\xC2\x9F"},             // controls of 8 bits
    Plage{"\xE2\x80\x8E", "\xE2\x80\x8F"},     // marks of direction
    Plage{"\xE2\x80\xA8", "\xE2\x80\xAE"},     // separators, embeddings
    Plage{"\xE2\x81\xA6", "\xE2\x81\xA9"},     // isolates
    Plage{"\xEF\xBB\xBF", "\xEF\xBB\xBF"},     // mark of byte order
};

bool EstUneCommande(std::string_view caractère) {
  return std::ranges::any_of(kCommandes, [&](const Plage& plage) {
    return caractère.size() == plage.first.size() && caractère >= plage.first &&
           caractère <= plage.second;
  });
}

std::string EnTexte(std::string_view texte, bool avecLesLignes) {
  std::string sûr;
  sûr.reserve(texte.size());
  while (!texte.empty()) {
    const auto ascii = std::ranges::find_if_not(texte, [](char c) { return c >= ' ' && c < 0x7F; });
    sûr.append(texte.begin(), ascii);
    texte = {ascii, texte.end()};
    if (texte.empty()) break;
    const std::size_t longueur = LongueurUTF8(texte);
    const std::string_view caractère = texte.substr(0, std::max<std::size_t>(longueur, 1));
    texte.remove_prefix(caractère.size());
    if (longueur == 0) {
      sûr += kRemplacement;
    } else if (EstUneCommande(caractère) && !(avecLesLignes && caractère == "\n")) {
      sûr += ' ';
    } else {
      sûr += caractère;
    }
  }
  return sûr;
}

}  // namespace

std::string UneSeuleLigne(std::string_view texte) {
  return EnTexte(texte, false);
}

std::string SansSéquence(std::string_view texte) {
  return EnTexte(texte, true);
}

}  // namespace zuma::linux_
