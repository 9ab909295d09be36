#pragma once

#include <array>
#include <csignal>

namespace zuma::host {

/// From its construction on, Ctrl-C, a request to terminate, a terminal that is closed and a reader
/// that goes away only ask for an end: the program leaves its loop and puts the outputs to rest. A
/// signal that the caller had made the program ignore stays ignored. The former handling comes back
/// at destruction.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  /// An end was asked for, since the construction. False again once this has ended.
  [[nodiscard]] static bool Demandée() noexcept;

 private:
  static constexpr std::array kSignaux{SIGINT, SIGTERM, SIGHUP, SIGPIPE};
  std::array<void (*)(int), kSignaux.size()> anciens_{};
};

}  // namespace zuma::host
