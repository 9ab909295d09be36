#include "host/verbes/terminal.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/linux/texte_ligne.h"

namespace zuma::host {
namespace {

constexpr std::array<std::string_view, 6> kCodes{"", "1;36", "32", "33", "1;31", "90"};
constexpr std::size_t kLignesParDéfaut = 24;

bool EstSuite(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

}  // namespace

Terminal::Terminal() : terminal_(::isatty(STDOUT_FILENO) == 1), couleurs_(terminal_) {
  const char* sans = std::getenv("NO_COLOR");
  if (sans != nullptr && *sans != '\0') couleurs_ = false;
}

std::size_t Terminal::Lignes() const {
  winsize taille{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &taille) != 0 || taille.ws_row == 0) {
    return kLignesParDéfaut;
  }
  return taille.ws_row;
}

std::size_t Terminal::Colonnes() const {
  constexpr std::size_t kColonnesParDéfaut = 80;
  winsize taille{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &taille) != 0 || taille.ws_col == 0) {
    return kColonnesParDéfaut;
  }
  return taille.ws_col;
}

std::string Terminal::Colore(std::string_view texte, Ton ton) const {
  const std::string_view code = kCodes[static_cast<std::size_t>(ton)];
  if (!couleurs_ || code.empty()) return std::string(texte);
  return "\x1b[" + std::string(code) + "m" + std::string(texte) + "\x1b[0m";
}

void Terminal::Montre(const std::vector<std::string>& lignes) {
  std::string sortie;
  std::size_t reste = lignes.size();
  if (terminal_) {
    sortie += "\x1b[H";
    // The last line stays free: filling it would scroll the view away.
    reste = std::min(reste, Lignes() - 1);
  }
  for (const std::string& ligne : lignes) {
    if (reste-- == 0) break;
    sortie += ligne;
    sortie += terminal_ ? "\x1b[K\n" : "\n";
  }
  if (terminal_) sortie += "\x1b[J";
  std::fwrite(sortie.data(), 1, sortie.size(), stdout);
  std::fflush(stdout);
}

std::size_t Largeur(std::string_view texte) {
  std::size_t colonnes = 0;
  for (const char c : texte) colonnes += EstSuite(c) ? 0 : 1;
  return colonnes;
}

std::string AGauche(std::string_view texte, std::size_t colonnes) {
  std::string sortie;
  std::size_t largeur = 0;
  for (const char c : linux_::UneSeuleLigne(texte)) {
    if (!EstSuite(c) && largeur++ == colonnes) break;
    sortie += c;
  }
  sortie.append(colonnes - std::min(colonnes, Largeur(sortie)), ' ');
  return sortie;
}

std::string ADroite(std::string_view texte, std::size_t colonnes) {
  const std::size_t largeur = Largeur(texte);
  return std::string(colonnes - std::min(colonnes, largeur), ' ') + std::string(texte);
}

}  // namespace zuma::host
