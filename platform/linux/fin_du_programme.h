#pragma once

#include <cstdlib>
#include <functional>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::linux_ {

/// Ends the process without destructors. The reason reaches the error record and the standard error
/// first; then the host puts the outputs to rest, since a device that is lost must not leave the
/// others moving.
class FinDuProgrammeLinux final : public FinDuProgramme {
 public:
  /// `registre` never fails.
  explicit FinDuProgrammeLinux(Ref<ZED_Erreur> registre) : registre_(std::move(registre)) {}

  /// What the host does last, once; it may talk to the devices. Nothing takes it back.
  void Avant(std::function<void()> geste) { avant_ = std::move(geste); }

  /// Returns where the last act asks for the end too: that operation alone fails.
  void ArrêteLeProgramme(std::string_view raison) override {
    if (std::exchange(finit_, true)) return;
    if (registre_) registre_->AjouteErreur(raison, TableVariables(1));
    for (const std::string_view morceau : {std::string_view("zuma : "), raison, {"\n"}}) {
      (void)!::write(STDERR_FILENO, morceau.data(), morceau.size());
    }
    try {
      if (avant_) avant_();
    } catch (...) {  // whatever it is, the end comes
    }
    std::_Exit(EXIT_FAILURE);
  }
  [[nodiscard]] bool EnCours() const override { return finit_; }

 private:
  Ref<ZED_Erreur> registre_;
  std::function<void()> avant_;
  bool finit_ = false;
};

}  // namespace zuma::linux_
