#pragma once

#include <chrono>

#include "platform/collaborateurs.h"

namespace zuma::linux_ {

/// Timer on the machine's monotonic clock. It never goes back, ignores changes of the time of
/// day, and a read costs some tens of nanoseconds without entering the kernel.
class Minuterie final : public ZED_Timer {
 public:
  [[nodiscard]] double LitMicrosecondes() override {
    // Counted from the construction: a double then keeps well under a nanosecond for months.
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - départ_)
        .count();
  }

 private:
  std::chrono::steady_clock::time_point départ_ = std::chrono::steady_clock::now();
};

}  // namespace zuma::linux_
