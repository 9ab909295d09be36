#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/valeur.h"
#include "platform/reglages_port.h"

namespace zuma::linux_ {

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
  void Ouvre(const std::string& chemin, const RéglagesPort& réglages);
  /// Closes the device for good: no use opens it again.
  void Ferme() noexcept;
  /// True while the device is open.
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
  RéglagesPort réglages_;
  std::chrono::steady_clock::time_point dernierEssai_{};
};

}  // namespace zuma::linux_
