#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/valeur.h"

namespace zuma::linux_ {

/// Line settings of a serial port, in the codes of the object model.
struct RéglagesLigne {
  std::int32_t vitesse = 9600;  ///< bits per second; any rate the hardware takes
  std::int32_t parité = 0;      ///< 0 none, 1 odd, 2 even, 3 mark, 4 space
  std::int32_t bits = 8;        ///< 5 to 8; 4 is refused by the system
  std::int32_t stop = 1;        ///< 1, 15 (one and a half) or 2

  friend bool operator==(const RéglagesLigne&, const RéglagesLigne&) = default;
};

/// One serial device, opened without ever blocking. A device that goes away (unplugged, hung up)
/// is closed and tried again at most once a second when it is next used, so that a cable pulled
/// and put back heals by itself.
class PortSérieLinux {
 public:
  PortSérieLinux() = default;
  ~PortSérieLinux() { Ferme(); }
  PortSérieLinux(const PortSérieLinux&) = delete;
  PortSérieLinux& operator=(const PortSérieLinux&) = delete;

  /// Opens a device; fails with its name, the system's reason and what to do.
  void Ouvre(const std::string& chemin, const RéglagesLigne& réglages);
  void Ferme() noexcept;
  [[nodiscard]] bool Ouvert() const noexcept { return fd_ >= 0; }

  /// What has arrived, at most `maximum` bytes (all when negative); empty on a device gone away.
  [[nodiscard]] Octets Lit(std::int32_t maximum);
  /// Bytes waiting to be read.
  [[nodiscard]] std::int32_t EnAttente();
  /// Hands all bytes to the system; fails when it does not take them at once.
  void Ecrit(std::string_view octets);
  /// Drops what waits in both directions.
  void Vide();

 private:
  void OuvreMaintenant();
  void Perd() noexcept;
  [[nodiscard]] bool Rouvre() noexcept;

  int fd_ = -1;
  bool voulu_ = false;
  std::string chemin_;
  RéglagesLigne réglages_;
  std::chrono::steady_clock::time_point dernierEssai_{};
};

}  // namespace zuma::linux_
