#include "platform/linux/compteurs_linux.h"

#include <algorithm>
#include <limits>

namespace zuma::linux_ {

std::int16_t CompteursLinux::Ouvre(std::string_view) {
  const double maintenant = timer_->LitMicrosecondes();
  auto libre = std::ranges::find_if(départs_, [](const Départ& d) { return !d; });
  if (libre == départs_.end()) {
    if (départs_.size() >= std::numeric_limits<std::int16_t>::max()) {
      throw Echec(Numéro::MémoireInsuffisante);
    }
    libre = départs_.insert(libre, Départ());
  }
  *libre = maintenant;
  return static_cast<std::int16_t>(libre - départs_.begin() + 1);
}

std::int32_t CompteursLinux::Lit(std::int16_t poignée) {
  const Départ* départ = Cherche(poignée);
  if (départ == nullptr) throw Echec(Numéro::IndiceHorsPlage);
  constexpr double kPlafond = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(timer_->LitMicrosecondes() - **départ, kPlafond));
}

void CompteursLinux::Ferme(std::int16_t poignée) noexcept {
  if (Départ* départ = Cherche(poignée)) départ->reset();
}

CompteursLinux::Départ* CompteursLinux::Cherche(std::int16_t poignée) noexcept {
  if (poignée < 1 || static_cast<std::size_t>(poignée) > départs_.size()) return nullptr;
  Départ& départ = départs_[static_cast<std::size_t>(poignée) - 1];
  return départ ? &départ : nullptr;
}

}  // namespace zuma::linux_
