#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "tree/canal.h"

namespace zuma {

/// The outputs that a link writes, with the values that its writes carried: a good answer says that
/// these arrived, whatever the channels hold by then. A write carries all of them, or one of them
/// where the device takes one at a time. Keeps its memory.
class SortiesEnvoyées {
 public:
  /// Forgets all channels.
  void Vide() noexcept { envois_.clear(); }
  /// Takes the channel with the value that it holds, for a write of all.
  void Ajoute(const CanalRef& canal) { envois_.push_back({canal, canal->ValeurCanal(), true}); }
  /// The same for a channel whose place in the write takes a value that is not its own: from then
  /// on it counts as reached by none.
  void AjouteSansValeur(const CanalRef& canal) {
    envois_.push_back({.canal = canal, .enRoute = true});
  }
  /// Knows the channels of `canaux` that `estSortie` admits, for writes of one each.
  template <class Canaux, class Filtre>
  void Suit(const Canaux& canaux, Filtre&& estSortie) {
    std::size_t rang = 0;
    for (const CanalRef& canal : canaux) {
      if (!estSortie(canal)) continue;
      if (rang == envois_.size() || envois_[rang].canal != canal) {
        envois_.resize(rang);
        envois_.push_back({canal});
      }
      ++rang;
    }
    envois_.resize(rang);
  }
  /// The channel whose value the next write carries; nullptr without channels. One that was given a
  /// stop comes first. One whose stop did not arrive comes every other time at least, so that an
  /// output which is refused holds up none. Then each has its turn.
  [[nodiscard]] const Canal* Suivante() {
    if (envois_.empty()) return nullptr;
    std::size_t choisie = Cherche(&Envoi::DonneArrêt);
    if (choisie == envois_.size() && !tourDeToutes_) choisie = Cherche(&Envoi::DoitArrêt);
    tourDeToutes_ = choisie != envois_.size();
    if (choisie == envois_.size()) choisie = Cherche(&Envoi::Toujours);
    for (Envoi& envoi : envois_) envoi.enRoute = false;
    dernière_ = choisie;
    envois_[choisie].valeur = envois_[choisie].canal->ValeurCanal();
    envois_[choisie].enRoute = true;
    return &*envois_[choisie].canal;
  }
  /// The write leaves: until it is answered the device may hold its former values or these.
  void Partent() const {
    for (const Envoi& envoi : envois_) {
      if (envoi.enRoute && !envoi.canal->Atteint()) envoi.canal->OublieAtteint();
    }
  }
  /// The device confirmed the write.
  void Arrivent() const {
    for (const Envoi& envoi : envois_) {
      if (envoi.enRoute) envoi.canal->MarqueAtteint(envoi.valeur);
    }
  }
  /// A value that may be a stop was given since the last write: an analog output went to 0, or a
  /// logic one changed, either way, since some rest at "on".
  [[nodiscard]] bool ArrêtDonné() const { return std::ranges::any_of(envois_, &Envoi::DonneArrêt); }
  /// Such a value has not arrived yet.
  [[nodiscard]] bool ArrêtDû() const { return std::ranges::any_of(envois_, &Envoi::DoitArrêt); }

 private:
  struct Envoi {
    CanalRef canal;
    double valeur = std::numeric_limits<double>::quiet_NaN();  ///< none was sent yet
    bool enRoute = false;                                      ///< the last write carried it

    [[nodiscard]] bool PeutArrêter() const {
      const double voulue = canal->ValeurCanal();
      return voulue == 0 ||
             (canal->TypeCanal() == ENUM_TYPE_FONCTION::FctSortiesLogiques && !std::isnan(voulue));
    }
    [[nodiscard]] bool DonneArrêt() const {
      return canal->ValeurCanal() != valeur && PeutArrêter();
    }
    [[nodiscard]] bool DoitArrêt() const { return !canal->Atteint() && PeutArrêter(); }
    [[nodiscard]] bool Toujours() const { return true; }
  };
  /// Place of the next channel behind the last one sent of which that is true; the number of
  /// channels when there is none.
  [[nodiscard]] std::size_t Cherche(bool (Envoi::*quoi)() const) const {
    const std::size_t nombre = envois_.size();
    for (std::size_t pas = 1; pas <= nombre; ++pas) {
      const std::size_t rang = (dernière_ + pas) % nombre;
      if ((envois_[rang].*quoi)()) return rang;
    }
    return nombre;
  }

  std::vector<Envoi> envois_;
  std::size_t dernière_ = 0;
  bool tourDeToutes_ = false;
};

}  // namespace zuma
