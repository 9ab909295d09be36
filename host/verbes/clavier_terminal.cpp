#include "host/verbes/clavier_terminal.h"

#include <poll.h>

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

namespace {

// One byte that waits, 0 for none.
char OctetEnAttente() {
  pollfd attente{STDIN_FILENO, POLLIN, 0};
  char octet = 0;
  if (::poll(&attente, 1, 0) != 1 || ::read(STDIN_FILENO, &octet, 1) != 1) return 0;
  return octet;
}

}  // namespace

char ClavierTerminal::Touche() {
  if (!ancien_) return 0;
  const char octet = OctetEnAttente();
  if (octet != '\x1b') return octet;
  if (OctetEnAttente() != '[') return 0;
  const char flèche = OctetEnAttente();
  return flèche == 'A' ? 'k' : flèche == 'B' ? 'j' : char{0};
}

}  // namespace zuma::host
