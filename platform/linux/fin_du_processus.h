#pragma once

#include <cstdlib>
#include <iostream>

#include "platform/services.h"

namespace zuma::linux_ {

/// Ends the process at once, as an abnormal end: what watches the program sees it, and the
/// hardware watchdog, no longer refreshed, puts the machine to rest.
class FinDuProcessus final : public FinDuProgramme {
 public:
  [[noreturn]] void ArrêteLeProgramme(std::string_view raison) override {
    std::cerr << raison << std::endl;
    std::abort();
  }
};

}  // namespace zuma::linux_
