#include "platform/port_regle.h"

namespace zuma {

// Settings that were not understood open nothing: the instrument would speak at another rate.
void PortRéglé::PortOuvert(bool ouvert) {
  if (!ouvert) {
    manqué_ = false;
    Ferme();
  } else if (réglages_.valides && !PortOuvert()) {
    manqué_ = !Ouvre();
  }
}

void PortRéglé::ConfigurePort(std::string_view réglages, bool ouvrir) {
  PortOuvert(false);
  std::string gardé = std::move(réglages_.port);
  réglages_ = LitRéglages(réglages);
  if (réglages_.port.empty()) réglages_.port = std::move(gardé);
  Prend(réglages_);
  if (ouvrir) PortOuvert(true);
}

void PortRéglé::RéinitialisePort() {
  if (manqué_) PortOuvert(true);
  Vide();
}

}  // namespace zuma
