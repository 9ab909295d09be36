#pragma once

#include <utility>
#include <vector>

#include "platform/collaborateurs.h"
#include "platform/linux/minuterie.h"
#include "platform/services.h"

namespace zuma::linux_ {

/// Microsecond counters over a timer. A closed handle is given again to the next counter.
class CompteursLinux final : public CompteursFins {
 public:
  /// Counts on that timer.
  explicit CompteursLinux(Ref<ZED_Timer> timer = Crée<Minuterie>()) : timer_(std::move(timer)) {}

  /// Handles start at 1. Fails with 7 when 32767 counters are open.
  [[nodiscard]] std::int16_t Ouvre(std::string_view nom) override;
  /// Microseconds since the counter was opened; stays at the largest 32-bit value after some 35
  /// minutes. Fails with 9 on a handle that is not open.
  [[nodiscard]] std::int32_t Lit(std::int16_t poignée) override;
  /// Nothing on a handle that is not open.
  void Ferme(std::int16_t poignée) noexcept override;

 private:
  struct Compteur {
    double départ = 0;
    bool ouvert = false;
  };
  [[nodiscard]] Compteur* Cherche(std::int16_t poignée) noexcept;

  Ref<ZED_Timer> timer_;
  std::vector<Compteur> compteurs_;  // handle n at n - 1
};

}  // namespace zuma::linux_
