#include "host/verbes/pseudo_terminal.h"

#include <array>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "base/echec.h"

namespace zuma::host {

PseudoTerminal::PseudoTerminal() : maître_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
  if (maître_ < 0 || ::grantpt(maître_) != 0 || ::unlockpt(maître_) != 0) {
    if (maître_ >= 0) ::close(maître_);
    throw Echec(Numéro::MatérielAbsent, "no pseudo-terminal to be had: is /dev/pts mounted?");
  }
  nom_ = ::ptsname(maître_);
  tenue_ = ::open(nom_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
  termios brut{};
  if (tenue_ < 0 || ::tcgetattr(tenue_, &brut) != 0) return;
  ::cfmakeraw(&brut);
  (void)::tcsetattr(tenue_, TCSANOW, &brut);
}

PseudoTerminal::~PseudoTerminal() {
  if (tenue_ >= 0) ::close(tenue_);
  if (maître_ >= 0) ::close(maître_);
}

PseudoTerminal::PseudoTerminal(PseudoTerminal&& autre) noexcept
    : maître_(std::exchange(autre.maître_, -1)),
      tenue_(std::exchange(autre.tenue_, -1)),
      nom_(std::move(autre.nom_)) {}

Octets PseudoTerminal::Lit() {
  std::array<char, 512> tampon{};
  const ssize_t lus = ::read(maître_, tampon.data(), tampon.size());
  return lus > 0 ? Octets(tampon.data(), static_cast<std::size_t>(lus)) : Octets();
}

// Nobody listens, or not fast enough: bytes are lost, as on a line.
void PseudoTerminal::Ecrit(const Octets& octets) {
  (void)!::write(maître_, octets.data(), octets.size());
}

}  // namespace zuma::host
