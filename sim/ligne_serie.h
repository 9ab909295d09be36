#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>
#include <utility>

#include "core/ref.h"
#include "core/valeur.h"
#include "sim/pannes.h"

namespace zuma::sim {

/// The far end of a simulated serial line: what a device answers to the bytes it is sent.
class AppareilSérie {
 public:
  virtual ~AppareilSérie() = default;
  /// Bytes written by the library, at the rate of the port.
  virtual void Reçoit(std::string_view octets, std::int32_t vitesse) = 0;
  /// Bytes that have arrived at the library by now, removed from the line.
  [[nodiscard]] virtual Octets Emet() = 0;
};

/// One simulated port: the device on it and its state of health.
struct LigneSérie {
  Ref<AppareilSérie> appareil;
  Pannes pannes;
  std::int32_t ouvertures = 0;
  Hasard hasard{1};
  double secondes = 0;  ///< since the start, at the last look at the planned faults
  std::deque<std::pair<double, Octets>> enRoute;  ///< late chunks and when they come
  Octets figés;                                   ///< what a stuck device goes on sending

  /// What has arrived from the device by now, faults and all.
  [[nodiscard]] Octets Relève();
};

}  // namespace zuma::sim
