#pragma once

#include <QString>

#include "dialogs/qt/mots.h"
#include "platform/attente.h"

namespace zuma::qt {

/// Shows a notice in plain text and returns once it has been answered. `suite`, when there is one,
/// says more in smaller letters.
void Annonce(const Mots& mots, const QString& titre, const QString& texte,
             const QString& suite = {});

/// Messages of the library as modal boxes, the object concerned in their title. Without an
/// application they go to the standard error.
///
/// **Hazard**: the timers of the program go on firing while a box stands. A host that runs its
/// passes from one must not start a pass inside another: it keeps a flag for as long as a pass
/// lasts. A box shown by a pass then stops the passes until it is answered, and a hardware watchdog
/// trips, as it should.
class MessagesQt final : public BoîteDeMessage, public AttenteLimitée {
 public:
  /// Titles in the language of `traducteur`; Nothing leaves the defaults.
  explicit MessagesQt(Ref<ZED_Traduction> traducteur) : mots_(std::move(traducteur)) {}

  void Montre(std::string_view texte, const ObjetConcerné& objet) override;
  /// On the standard error, once: a box would hold a stop that stands behind the wait.
  bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override;

 private:
  Mots mots_;
};

}  // namespace zuma::qt
