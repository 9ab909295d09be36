#pragma once

#include <cstdint>
#include <string>

#include "base/ref.h"
#include "platform/services.h"

namespace zuma {

/// Named counter of microseconds over the fine counter library. That library's count is small: past
/// a limit the counter is closed and opened again under its name, and what it had reached is kept,
/// so that a reader sees one running count.
class Exacticks {
 public:
  /// Count past which the counter is opened again, microseconds.
  static constexpr std::int32_t kLimite = 100'000'000;

  Exacticks() = default;
  ~Exacticks() { Ferme(); }
  Exacticks(const Exacticks&) = delete;
  Exacticks& operator=(const Exacticks&) = delete;

  /// Opens a counter that starts at 0; a former one is closed.
  void Ouvre(Pointeur<CompteursFins> compteurs, std::string nom);
  /// Microseconds since `Ouvre`; fails with 91 before it.
  [[nodiscard]] std::int64_t Lit();
  /// Closes the counter; nothing on a closed one.
  void Ferme() noexcept;
  /// Busy wait, in microseconds.
  void Attend(std::int64_t microsecondes);

 private:
  Pointeur<CompteursFins> compteurs_;
  std::string nom_;
  std::int16_t poignée_ = 0;
  std::int64_t acquis_ = 0;
};

}  // namespace zuma
