#pragma once

namespace zuma::host {

/// From its construction on, Ctrl-C and a request to terminate only ask for an end; the program
/// leaves its loop and puts the outputs to rest. The former handling comes back at destruction.
class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  [[nodiscard]] static bool Demandée() noexcept;
};

}  // namespace zuma::host
