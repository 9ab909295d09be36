#include "platform/linux/compteurs_linux.h"

#include <algorithm>
#include <limits>

namespace zuma::linux_ {

std::int16_t CompteursLinux::Ouvre(std::string_view) {
  const double maintenant = timer_->LitMicrosecondes();
  auto libre = std::ranges::find(compteurs_, false, &Compteur::ouvert);
  if (libre == compteurs_.end()) {
    if (compteurs_.size() >= std::numeric_limits<std::int16_t>::max()) {
      throw Echec(Numéro::MémoireInsuffisante);
    }
    libre = compteurs_.insert(libre, Compteur());
  }
  *libre = {maintenant, true};
  return static_cast<std::int16_t>(libre - compteurs_.begin() + 1);
}

std::int32_t CompteursLinux::Lit(std::int16_t poignée) {
  const Compteur* compteur = Cherche(poignée);
  if (compteur == nullptr) throw Echec(Numéro::IndiceHorsPlage);
  constexpr double kPlafond = std::numeric_limits<std::int32_t>::max();
  const double écoulées = timer_->LitMicrosecondes() - compteur->départ;
  return static_cast<std::int32_t>(std::min(écoulées, kPlafond));
}

void CompteursLinux::Ferme(std::int16_t poignée) noexcept {
  if (Compteur* compteur = Cherche(poignée)) compteur->ouvert = false;
}

CompteursLinux::Compteur* CompteursLinux::Cherche(std::int16_t poignée) noexcept {
  if (poignée < 1 || static_cast<std::size_t>(poignée) > compteurs_.size()) return nullptr;
  Compteur& compteur = compteurs_[static_cast<std::size_t>(poignée) - 1];
  return compteur.ouvert ? &compteur : nullptr;
}

}  // namespace zuma::linux_
