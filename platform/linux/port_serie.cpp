#include "platform/linux/port_serie.h"

// termios2 takes any bit rate. Its header and <termios.h> define the same names, so this file
// uses the kernel's alone.
#include <algorithm>
#include <asm/ioctls.h>
#include <asm/termbits.h>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "base/echec.h"

namespace zuma::linux_ {
namespace {

constexpr auto kEntreDeuxEssais = std::chrono::seconds(1);

[[noreturn]] void Refuse(const std::string& chemin, const char* opération, int erreur) {
  std::string conseil;
  if (erreur == EACCES) conseil = " ; ajoutez l'utilisateur au groupe dialout";
  if (erreur == ENOENT) conseil = " ; vérifiez le câble et le numéro de port";
  if (erreur == EBUSY) conseil = " ; un autre programme tient le port";
  throw Echec(Numéro::MatérielAbsent, "Port série '" + chemin + "' : " + opération + " (" +
                                          std::strerror(erreur) + ")" + conseil);
}

unsigned Bits(std::int32_t bits) {
  switch (bits) {
    case 5:
      return CS5;
    case 6:
      return CS6;
    case 7:
      return CS7;
    default:
      return CS8;
  }
}

unsigned Parité(std::int32_t code) {
  switch (code) {
    case 1:
      return PARENB | PARODD;
    case 2:
      return PARENB;
    case 3:
      return PARENB | CMSPAR | PARODD;
    case 4:
      return PARENB | CMSPAR;
    default:
      return 0;
  }
}

// Raw mode: no echo, no translation, no flow control, reads return at once.
termios2 Traduit(termios2 t, const RéglagesPort& r) {
  t.c_iflag = 0;
  t.c_oflag = 0;
  t.c_lflag = 0;
  t.c_cflag = CREAD | CLOCAL | BOTHER | Bits(r.bits) | Parité(r.parité);
  // One and a half stop bits exist only with 5 data bits, where the system sends them for 2.
  if (r.stop != 1) t.c_cflag |= CSTOPB;
  t.c_cc[VMIN] = 0;
  t.c_cc[VTIME] = 0;
  t.c_ispeed = static_cast<speed_t>(r.vitesse);
  t.c_ospeed = static_cast<speed_t>(r.vitesse);
  return t;
}

}  // namespace

void PortSérieLinux::Ouvre(const std::string& chemin, const RéglagesPort& réglages) {
  Ferme();
  chemin_ = chemin;
  réglages_ = réglages;
  OuvreMaintenant();
  voulu_ = true;
}

void PortSérieLinux::OuvreMaintenant() {
  if (réglages_.bits < 5 || réglages_.bits > 8 || réglages_.vitesse <= 0) {
    throw Echec(Numéro::AppelIncorrect,
                "Port série '" + chemin_ + "' : " + std::to_string(réglages_.bits) + " bits à " +
                    std::to_string(réglages_.vitesse) +
                    " bauds n'existe pas sur ce système (5 à 8 bits, vitesse positive)");
  }
  const int fd = ::open(chemin_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) Refuse(chemin_, "ouverture refusée", errno);
  termios2 t{};
  if (::ioctl(fd, TCGETS2, &t) != 0) {
    const int erreur = errno;
    ::close(fd);
    Refuse(chemin_, "ce n'est pas un port série", erreur);
  }
  t = Traduit(t, réglages_);
  if (::ioctl(fd, TCSETS2, &t) != 0) {
    const int erreur = errno;
    ::close(fd);
    Refuse(chemin_, "réglages refusés", erreur);
  }
  (void)::ioctl(fd, TIOCEXCL);
  fd_ = fd;
}

void PortSérieLinux::Ferme() noexcept {
  Perd();
  voulu_ = false;
}

void PortSérieLinux::Perd() noexcept {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}

bool PortSérieLinux::Rouvre() noexcept {
  if (fd_ >= 0) return true;
  const auto maintenant = std::chrono::steady_clock::now();
  if (!voulu_ || maintenant - dernierEssai_ < kEntreDeuxEssais) return false;
  dernierEssai_ = maintenant;
  try {
    OuvreMaintenant();
  } catch (const Echec&) {
    return false;  // still away: the next try comes in a second
  }
  return true;
}

Octets PortSérieLinux::Lit(std::int32_t maximum) {
  if (!Rouvre()) return {};
  const std::int32_t présents = EnAttente();
  if (fd_ < 0) return {};
  const std::int32_t voulus = maximum < 0 ? présents : std::min(maximum, présents);
  Octets lus(static_cast<std::size_t>(voulus > 0 ? voulus : 1), '\0');
  const ssize_t n = ::read(fd_, lus.data(), lus.size());
  if (n < 0 && errno != EAGAIN && errno != EINTR) Perd();
  lus.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
  return lus;
}

std::int32_t PortSérieLinux::EnAttente() {
  if (!Rouvre()) return 0;
  int présents = 0;
  if (::ioctl(fd_, FIONREAD, &présents) != 0) Perd();
  return présents;
}

void PortSérieLinux::Ecrit(std::string_view octets) {
  if (!Rouvre()) {
    throw Echec(Numéro::MatérielAbsent,
                "Port série '" + chemin_ + "' " + (voulu_ ? "débranché" : "fermé"));
  }
  const ssize_t n = ::write(fd_, octets.data(), octets.size());
  if (n == static_cast<ssize_t>(octets.size())) return;
  const int erreur = n < 0 ? errno : EAGAIN;
  if (erreur != EAGAIN) Perd();
  Refuse(chemin_, "écriture refusée", erreur);
}

void PortSérieLinux::Vide() {
  if (Rouvre()) (void)::ioctl(fd_, TCFLSH, TCIOFLUSH);
}

}  // namespace zuma::linux_
