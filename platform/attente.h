#pragma once

#include <string_view>

#include "platform/services.h"

namespace zuma {

/// What a message box may be besides: one that can give up a device that is waited for. A box that
/// is only a `BoîteDeMessage` lets a wait without a way out go on for ever.
class AttenteLimitée {
 public:
  virtual ~AttenteLimitée() = default;
  /// Times after which the ready-made boxes give up.
  static constexpr int kPatience = 3;
  /// Shows the text for the `fois`-th time of one wait, from 1. True waits on; false gives the
  /// device up, and the wait fails. Must not wait itself: a stop may stand behind the device.
  [[nodiscard]] virtual bool AttendEncore(std::string_view texte, const ObjetConcerné& objet,
                                          int fois) = 0;
};

/// Shows the text in such a wait. False when the wait is to be given up.
[[nodiscard]] inline bool MontreEnAttente(BoîteDeMessage& boîte, std::string_view texte,
                                          const ObjetConcerné& objet, int fois) {
  if (auto* limitée = dynamic_cast<AttenteLimitée*>(&boîte)) {
    return limitée->AttendEncore(texte, objet, fois);
  }
  boîte.Montre(texte, objet);
  return true;
}

}  // namespace zuma
