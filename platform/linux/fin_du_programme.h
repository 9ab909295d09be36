#pragma once

#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::linux_ {

/// Ends the process at once, without destructors: what must not go on does not go through code
/// that talks to the hardware. The reason reaches the error record and the standard error first.
class FinDuProgrammeLinux final : public FinDuProgramme {
 public:
  /// `registre` never fails.
  explicit FinDuProgrammeLinux(Ref<ZED_Erreur> registre) : registre_(std::move(registre)) {}

  [[noreturn]] void ArrêteLeProgramme(std::string_view raison) override {
    if (registre_) registre_->AjouteErreur(raison, TableVariables(1));
    for (const std::string_view morceau : {std::string_view("zuma : "), raison, {"\n"}}) {
      (void)!::write(STDERR_FILENO, morceau.data(), morceau.size());
    }
    std::_Exit(EXIT_FAILURE);
  }

 private:
  Ref<ZED_Erreur> registre_;
};

}  // namespace zuma::linux_
