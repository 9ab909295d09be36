#pragma once

#include <string>
#include <string_view>

#include "platform/services.h"

namespace zuma::python::modele {

/// Messages where Python gave no box: to `sys.stderr`, and nobody is waited for.
class MessagesVersPython final : public BoîteDeMessage {
 public:
  void Montre(std::string_view texte, const ObjetConcerné& objet) override;
};

}  // namespace zuma::python::modele
