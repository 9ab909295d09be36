#pragma once

#include <string>

#include "base/valeur.h"

namespace zuma::host {

/// One end of a pseudo-terminal; any program may open the other by its name and sees a serial port.
class PseudoTerminal {
 public:
  /// Fails with 31999 when the machine gives none.
  PseudoTerminal();
  ~PseudoTerminal();
  PseudoTerminal(PseudoTerminal&& autre) noexcept;
  PseudoTerminal& operator=(PseudoTerminal&&) = delete;

  [[nodiscard]] const std::string& Nom() const noexcept { return nom_; }
  /// What was written at the other end. Never waits.
  [[nodiscard]] Octets Lit();
  void Ecrit(const Octets& octets);

 private:
  int maître_ = -1;
  int tenue_ = -1;  ///< the other end, held open so that its last user's leaving is no hang-up
  std::string nom_;
};

}  // namespace zuma::host
