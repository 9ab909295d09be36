#include "host/clavier_terminal.h"

#include <poll.h>
#include <string_view>

#include <termios.h>
#include <unistd.h>

namespace zuma::host {

struct ClavierTerminal::Ancien {
  termios réglages{};
};

ClavierTerminal::ClavierTerminal() {
  if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDOUT_FILENO) != 1) return;
  auto ancien = std::make_unique<Ancien>();
  if (::tcgetattr(STDIN_FILENO, &ancien->réglages) != 0) return;
  termios brut = ancien->réglages;
  brut.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  if (::tcsetattr(STDIN_FILENO, TCSANOW, &brut) == 0) ancien_ = std::move(ancien);
}

ClavierTerminal::~ClavierTerminal() {
  if (ancien_) (void)::tcsetattr(STDIN_FILENO, TCSANOW, &ancien_->réglages);
}

char ClavierTerminal::Touche() {
  if (!ancien_) return 0;
  pollfd attente{STDIN_FILENO, POLLIN, 0};
  if (::poll(&attente, 1, 0) != 1) return 0;
  char octets[8];
  const ssize_t lus = ::read(STDIN_FILENO, octets, sizeof octets);
  if (lus <= 0) return 0;
  const std::string_view texte(octets, static_cast<std::size_t>(lus));
  if (texte == "\x1b[A") return 'k';
  if (texte == "\x1b[B") return 'j';
  return texte[0] == '\x1b' ? char{0} : texte[0];
}

}  // namespace zuma::host
