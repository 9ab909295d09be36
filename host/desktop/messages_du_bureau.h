#pragma once

#include <utility>

#include "dialogs/qt/messages_qt.h"
#include "host/desktop/battement.h"
#include "host/problemes.h"

namespace zuma::host {

/// Messages of the library: all of them to the panel. One that answers an act of the operator is
/// shown in a box too; one of the load or of a pass is not, since a box would hold the passes.
class MessagesDuBureau final : public BoîteDeMessage, public AttenteLimitée {
 public:
  MessagesDuBureau(Ref<Recueil> recueil, Ref<ZED_Traduction> traducteur, const Battement& battement)
      : recueil_(std::move(recueil)), boîtes_(std::move(traducteur)), battement_(battement) {}

  void Montre(std::string_view texte, const ObjetConcerné& objet) override {
    recueil_->Montre(texte, objet);
    if (battement_.EntreDeuxPasses()) boîtes_.Montre(texte, objet);
  }
  bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override {
    return recueil_->AttendEncore(texte, objet, fois);
  }

 private:
  Ref<Recueil> recueil_;
  qt::MessagesQt boîtes_;
  const Battement& battement_;
};

}  // namespace zuma::host
