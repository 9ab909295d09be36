#pragma once

#include <iosfwd>

#include "platform/attente.h"

namespace zuma::linux_ {

/// Messages to the integrator as lines of text: "[Capteur 12 Force] text". Asks to continue only
/// when somebody is there to answer; a frame that runs without a terminal never waits here.
///
/// While it waits, nothing is refreshed: a hardware watchdog trips, as it should.
class MessagesTerminal final : public BoîteDeMessage, public AttenteLimitée {
 public:
  /// Writes to `sortie`, which outlives this; asks on `réponses` when given.
  explicit MessagesTerminal(std::ostream& sortie, std::istream* réponses = nullptr)
      : sortie_(sortie), réponses_(réponses) {}

  /// On the standard error; asks on the standard input when `demande` and both are terminals.
  [[nodiscard]] static MessagesTerminal Standard(bool demande);

  void Montre(std::string_view texte, const ObjetConcerné& objet) override;
  /// Told once and asking nobody: a stop may stand behind the wait.
  bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override;

 private:
  void Ecrit(std::string_view texte, const ObjetConcerné& objet);
  void Attend();

  std::ostream& sortie_;
  std::istream* réponses_;
};

}  // namespace zuma::linux_
