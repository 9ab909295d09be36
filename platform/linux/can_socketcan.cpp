#include "platform/linux/can_socketcan.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <net/if.h>
#include <string_view>

#include <linux/can.h>
#include <linux/can/raw.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zuma::linux_ {
namespace {

constexpr std::int32_t kEchec = -1;
constexpr std::int32_t kPortsParCarte = 2;
// Full buffers of the interface are no failure of the port.
bool EstPassagère(int erreur) {
  return erreur == EAGAIN || erreur == EWOULDBLOCK || erreur == ENOBUFS || erreur == EINTR;
}

std::string_view Conseil(int erreur) {
  switch (erreur) {
    case EAFNOSUPPORT:
    case EPROTONOSUPPORT:
      return "le noyau n'a pas de sockets CAN, chargez les modules can et can_raw";
    case ENODEV:
      return "l'interface n'existe pas, vérifiez la carte et son pilote (ip link)";
    case ENETDOWN:
      return "mettez l'interface en service : ip link set ... up type can bitrate ...";
    default:
      return "vérifiez l'interface (ip -details link)";
  }
}

}  // namespace

PriseCAN& PriseCAN::operator=(PriseCAN&& autre) noexcept {
  if (this != &autre) {
    Ferme();
    fd_ = std::exchange(autre.fd_, -1);
    réglages_ = autre.réglages_;
  }
  return *this;
}

void PriseCAN::Ferme() noexcept {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}

int PriseCAN::Envoie(const TrameCAN& trame) noexcept {
  can_frame brute{};
  const bool longue = réglages_.mode == 1;
  brute.can_id = trame.identifiant & (longue ? CAN_EFF_MASK : CAN_SFF_MASK);
  if (longue) brute.can_id |= CAN_EFF_FLAG;
  if (trame.distante != 0) brute.can_id |= CAN_RTR_FLAG;
  brute.can_dlc = std::min<std::uint8_t>(trame.nombre, CAN_MAX_DLEN);
  std::copy_n(trame.données.begin(), brute.can_dlc, brute.data);
  const ssize_t écrits = ::send(fd_, &brute, sizeof brute, MSG_DONTWAIT | MSG_NOSIGNAL);
  if (écrits < 0) return errno;
  return écrits == sizeof brute ? 0 : EIO;
}

int PriseCAN::Reçoit(TrameCAN& trame) noexcept {
  while (true) {
    can_frame brute{};
    const ssize_t lus = ::recv(fd_, &brute, sizeof brute, MSG_DONTWAIT);
    if (lus < 0) return errno;
    if (lus == 0) return EPIPE;
    const bool longue = (brute.can_id & CAN_EFF_FLAG) != 0;
    const std::uint32_t masque = longue ? CAN_EFF_MASK : CAN_SFF_MASK;
    const std::uint32_t identifiant = brute.can_id & masque;
    const bool laisséPasser =
        ((identifiant ^ réglages_.codeAcceptation) & ~réglages_.masqueAcceptation & masque) == 0;
    if (lus != sizeof brute || (brute.can_id & CAN_ERR_FLAG) != 0 || !laisséPasser) continue;
    trame = {.identifiant = identifiant,
             .distante = static_cast<std::uint8_t>((brute.can_id & CAN_RTR_FLAG) != 0 ? 1 : 0),
             .nombre = std::min<std::uint8_t>(brute.can_dlc, CAN_MAX_DLEN)};
    if (trame.distante == 0) std::copy_n(brute.data, trame.nombre, trame.données.begin());
    return 0;
  }
}

int OuvreInterfaceCAN(const std::string& interface) noexcept {
  const int fd = ::socket(PF_CAN, SOCK_RAW | SOCK_CLOEXEC, CAN_RAW);
  if (fd < 0) return -errno;
  sockaddr_can adresse{};
  adresse.can_family = AF_CAN;
  adresse.can_ifindex = static_cast<int>(::if_nametoindex(interface.c_str()));
  int erreur = adresse.can_ifindex == 0 ? ENODEV : 0;
  if (erreur == 0 && ::bind(fd, reinterpret_cast<const sockaddr*>(&adresse), sizeof adresse) != 0) {
    erreur = errno;
  }
  if (erreur == 0) return fd;
  ::close(fd);
  return -erreur;
}

std::string CanSocketCAN::Nom(const Port& port) const {
  const auto connue = interfaces_.find({port.carte, port.port});
  if (connue != interfaces_.end()) return connue->second;
  return "can" + std::to_string(kPortsParCarte * port.carte + port.port);
}

void CanSocketCAN::Signale(Port& port, int erreur) {
  if (std::exchange(port.signalé, true) || !registre_) return;
  registre_->AjouteErreur("Port CAN " + std::to_string(port.port) + " de la carte " +
                              std::to_string(port.carte) + " (interface " + Nom(port) +
                              ") inaccessible (" + std::strerror(erreur) + ") ; " +
                              std::string(Conseil(erreur)) + ".",
                          TableVariables(1));
}

CanSocketCAN::Port& CanSocketCAN::LePort(std::int32_t carte, std::int32_t port) {
  const auto connu = std::ranges::find_if(
      ports_, [&](const Port& p) { return p.carte == carte && p.port == port; });
  if (connu != ports_.end()) return *connu;
  return ports_.emplace_back(Port{.carte = carte, .port = port, .prise = PriseCAN()});
}

CanSocketCAN::Port* CanSocketCAN::DeLaPoignée(std::int32_t poignée) noexcept {
  const auto rang = static_cast<std::size_t>(poignée) - 1;
  return poignée >= 1 && rang < ports_.size() && ports_[rang].prise.Ouverte() ? &ports_[rang]
                                                                              : nullptr;
}

bool CanSocketCAN::Ouvre(Port& port) {
  if (port.prise.Ouverte()) return true;
  const int fd = ouvre_(Nom(port));
  if (fd < 0) {
    Signale(port, -fd);
    return false;
  }
  port.prise = PriseCAN(fd);
  port.signalé = false;
  return true;
}

bool CanSocketCAN::Réussit(Port& port, int erreur) {
  if (erreur == 0) {
    port.signalé = false;
  } else if (!EstPassagère(erreur)) {
    Signale(port, erreur);
  }
  return erreur == 0;
}

bool CanSocketCAN::Envoie(Port& port, const TrameCAN& trame) {
  return Réussit(port, port.prise.Envoie(trame));
}

bool CanSocketCAN::Reçoit(Port& port, TrameCAN& trame) {
  return Réussit(port, port.prise.Reçoit(trame));
}

std::int32_t CanSocketCAN::CanOpenDriver(std::int32_t carte, std::int32_t port) {
  Port& ouvert = LePort(carte, port);
  if (!Ouvre(ouvert)) return kEchec;
  return static_cast<std::int32_t>(&ouvert - ports_.data()) + 1;
}

std::int32_t CanSocketCAN::CanConfigPort(std::int32_t poignée, const PortCAN& réglages) {
  Port* port = DeLaPoignée(poignée);
  if (port == nullptr) return kEchec;
  port->prise.Réglages(réglages);
  return 0;
}

std::int32_t CanSocketCAN::CanSendMsg(std::int32_t poignée, const TrameCAN& trame) {
  Port* port = DeLaPoignée(poignée);
  return port != nullptr && Envoie(*port, trame) ? 0 : kEchec;
}

std::int32_t CanSocketCAN::CanRcvMsg(std::int32_t poignée, TrameCAN& trame) {
  Port* port = DeLaPoignée(poignée);
  return port != nullptr && Reçoit(*port, trame) ? 0 : kEchec;
}

void CanSocketCAN::CanCloseDriver(std::int32_t poignée) noexcept {
  if (Port* port = DeLaPoignée(poignée)) port->prise.Ferme();
}

// Address and mask of the first generation select identifiers in a way of the card's own; the
// rulers are told apart by their identifiers, so everything is let through.
std::int32_t CanSocketCAN::W_7841_Config(std::int32_t carte, std::int32_t port, const Port7841&) {
  return Ouvre(LePort(carte, port)) ? 0 : kEchec;
}

std::int32_t CanSocketCAN::W_7841_SendMsg(std::int32_t carte, std::int32_t port,
                                          const Trame7841& trame) {
  Port& ouvert = LePort(carte, port);
  return ouvert.prise.Ouverte() && Envoie(ouvert, trame.EnTrameCAN()) ? 0 : kEchec;
}

std::int32_t CanSocketCAN::W_7841_RcvMsg(std::int32_t carte, std::int32_t port, Trame7841& trame) {
  Port& ouvert = LePort(carte, port);
  TrameCAN reçue;
  if (!ouvert.prise.Ouverte() || !Reçoit(ouvert, reçue)) return 0;
  trame = Trame7841::De(reçue);
  return 1;
}

}  // namespace zuma::linux_
