#include "platform/linux/messages_terminal.h"

#include <iostream>
#include <string>

#include <unistd.h>

#include "platform/linux/texte_ligne.h"

namespace zuma::linux_ {

MessagesTerminal MessagesTerminal::Standard(bool demande) {
  const bool présent = ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1;
  return MessagesTerminal(std::cerr, demande && présent ? &std::cin : nullptr);
}

void MessagesTerminal::Montre(std::string_view texte, const ObjetConcerné& objet) {
  Ecrit(texte, objet);
  if (réponses_ != nullptr) Attend();
}

bool MessagesTerminal::AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) {
  if (fois == 1) Ecrit(texte, objet);
  return fois < kPatience;
}

void MessagesTerminal::Ecrit(std::string_view texte, const ObjetConcerné& objet) {
  std::string ligne = "[";
  for (const std::string_view mot : {objet.classe, objet.clé, objet.nom}) {
    if (mot.empty()) continue;
    if (ligne.size() > 1) ligne += ' ';
    ligne += mot;
  }
  ligne = ligne.size() > 1 ? ligne + "] " : std::string();
  ligne += texte;
  sortie_ << UneSeuleLigne(ligne) << '\n' << std::flush;
  // A terminal that was closed must not silence the messages that follow elsewhere.
  sortie_.clear();
}

void MessagesTerminal::Attend() {
  sortie_ << "Entrée pour continuer... " << std::flush;
  std::string réponse;
  // End of input: nobody answers any more.
  if (!std::getline(*réponses_, réponse)) réponses_ = nullptr;
}

}  // namespace zuma::linux_
