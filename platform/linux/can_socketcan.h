#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/can.h"
#include "platform/collaborateurs.h"

namespace zuma::linux_ {

/// One CAN port on a file descriptor that carries the kernel's `can_frame` records. It owns the
/// descriptor.
class PriseCAN {
 public:
  /// Takes over an open descriptor; -1 is a closed port.
  explicit PriseCAN(int descripteur = -1) noexcept : fd_(descripteur) {}
  ~PriseCAN() { Ferme(); }
  ///@{
  /// The descriptor goes along; the other one is closed then.
  PriseCAN(PriseCAN&& autre) noexcept
      : fd_(std::exchange(autre.fd_, -1)), réglages_(autre.réglages_) {}
  PriseCAN& operator=(PriseCAN&& autre) noexcept;
  ///@}
  PriseCAN(const PriseCAN&) = delete;
  PriseCAN& operator=(const PriseCAN&) = delete;

  /// True while there is a descriptor.
  [[nodiscard]] bool Ouverte() const noexcept { return fd_ >= 0; }
  /// Closes it; nothing on a closed port.
  void Ferme() noexcept;
  /// Acceptance of frames from now on.
  void Réglages(const PortCAN& réglages) noexcept { réglages_ = réglages; }
  /// Gives 0, or the system's error number. Never waits.
  [[nodiscard]] int Envoie(const TrameCAN& trame) noexcept;
  /// The next frame that the acceptance code lets through: 0, EAGAIN when none waits, or the
  /// system's error number.
  [[nodiscard]] int Reçoit(TrameCAN& trame) noexcept;

 private:
  int fd_;
  PortCAN réglages_{.codeAcceptation = 0, .masqueAcceptation = ~0U};
};

/// Opens a raw CAN socket on a network interface. Gives the descriptor, or minus the system's error
/// number.
[[nodiscard]] int OuvreInterfaceCAN(const std::string& interface) noexcept;

/// Network interface of each port by card and port. Without an entry, port p of card c is
/// can(2c + p).
using InterfacesCAN = std::map<std::pair<std::int32_t, std::int32_t>, std::string>;

/// CAN card on the kernel's CAN interfaces. Their bit rate is set outside the program, as root:
///
///     ip link set can0 up type can bitrate 1000000
///
/// A port that cannot be opened or is lost is told once in the error record, and the calls answer
/// as those of a card that fails.
class CanSocketCAN final : public BibliothèqueCAN {
 public:
  /// Opens an interface as `OuvreInterfaceCAN` does.
  using Ouverture = std::function<int(const std::string&)>;
  /// `ouvre` makes the descriptors: sockets, or what stands in for them.
  explicit CanSocketCAN(Ref<ZED_Erreur> registre, InterfacesCAN interfaces = {},
                        Ouverture ouvre = &OuvreInterfaceCAN)
      : registre_(std::move(registre)),
        interfaces_(std::move(interfaces)),
        ouvre_(std::move(ouvre)) {}

  [[nodiscard]] std::int32_t CanOpenDriver(std::int32_t carte, std::int32_t port) override;
  [[nodiscard]] std::int32_t CanConfigPort(std::int32_t poignée, const PortCAN& réglages) override;
  [[nodiscard]] std::int32_t CanSendMsg(std::int32_t poignée, const TrameCAN& trame) override;
  [[nodiscard]] std::int32_t CanRcvMsg(std::int32_t poignée, TrameCAN& trame) override;
  void CanCloseDriver(std::int32_t poignée) noexcept override;
  [[nodiscard]] std::int32_t W_7841_Config(std::int32_t carte, std::int32_t port,
                                           const Port7841& réglages) override;
  [[nodiscard]] std::int32_t W_7841_SendMsg(std::int32_t carte, std::int32_t port,
                                            const Trame7841& trame) override;
  [[nodiscard]] std::int32_t W_7841_RcvMsg(std::int32_t carte, std::int32_t port,
                                           Trame7841& trame) override;

 private:
  struct Port {
    std::int32_t carte, port;
    PriseCAN prise;
    bool signalé = false;  ///< its failure was told
  };
  [[nodiscard]] Port& LePort(std::int32_t carte, std::int32_t port);
  [[nodiscard]] Port* DeLaPoignée(std::int32_t poignée) noexcept;
  [[nodiscard]] bool Ouvre(Port& port);
  [[nodiscard]] bool Envoie(Port& port, const TrameCAN& trame);
  [[nodiscard]] bool Reçoit(Port& port, TrameCAN& trame);
  [[nodiscard]] std::string Nom(const Port& port) const;
  /// Tells a failure of the port that is new; true when there is none.
  bool Réussit(Port& port, int erreur);
  void Signale(Port& port, int erreur);

  Ref<ZED_Erreur> registre_;
  InterfacesCAN interfaces_;
  Ouverture ouvre_;
  std::vector<Port> ports_;  ///< a handle is the rank from 1
};

}  // namespace zuma::linux_
