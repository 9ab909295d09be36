#pragma once

#include <string>

#include "platform/services.h"

namespace zuma::linux_ {

/// Clock of the day in local time, and sleep of the calling thread.
class HorlogeSystème final : public Horloge {
 public:
  [[nodiscard]] std::string TexteHeure() const override;
  /// Sleeps the whole time, even when signals arrive. 0, less and what is no number return at
  /// once; nothing sleeps more than a day.
  void Dort(double secondes) override;

  /// Local date and time as "yyyy-mm-dd hh:mm:ss".
  [[nodiscard]] static std::string TexteInstant();
};

}  // namespace zuma::linux_
