#pragma once

#include <algorithm>
#include <vector>

#include "tree/canal.h"

namespace zuma {

/// The outputs that the last write of a link carried, with the values that it carried: a good
/// answer says that these arrived, whatever the channels hold by then. Keeps its memory.
class SortiesEnvoyées {
 public:
  void Vide() noexcept { envois_.clear(); }
  /// Takes the channel with the value that it holds.
  void Ajoute(const CanalRef& canal) { envois_.push_back({canal, canal->ValeurCanal()}); }
  /// The write leaves: until it is answered the device may hold its former values or these.
  void Partent() const {
    for (const Envoi& envoi : envois_) {
      if (!envoi.canal->Atteint()) envoi.canal->OublieAtteint();
    }
  }
  /// The device confirmed the write.
  void Arrivent() const {
    for (const Envoi& envoi : envois_) envoi.canal->MarqueAtteint(envoi.valeur);
  }
  /// A value that may be a stop was given since the last write: an analog output went to 0, or a
  /// logic one changed, either way, since some rest at "on".
  [[nodiscard]] bool ArrêtDonné() const {
    return std::ranges::any_of(envois_, [](const Envoi& envoi) {
      return envoi.canal->ValeurCanal() != envoi.valeur && PeutArrêter(*envoi.canal);
    });
  }
  /// Such a value has not arrived yet.
  [[nodiscard]] bool ArrêtDû() const {
    return std::ranges::any_of(envois_, [](const Envoi& envoi) {
      return !envoi.canal->Atteint() && PeutArrêter(*envoi.canal);
    });
  }

 private:
  struct Envoi {
    CanalRef canal;
    double valeur;
  };
  static bool PeutArrêter(const Canal& canal) {
    return canal.ValeurCanal() == 0 || canal.TypeCanal() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
  }

  std::vector<Envoi> envois_;
};

}  // namespace zuma
