#include "sim/bus_ports.h"

namespace zuma::sim {
namespace {

constexpr std::uint8_t kPersonne = 0xFF;

std::uint16_t Suivant(std::uint16_t port, unsigned pas) {
  return static_cast<std::uint16_t>(port + pas);
}

}  // namespace

std::uint16_t AppareilPorts::LitMot(std::uint16_t décalage) {
  const unsigned bas = Lit(décalage);
  return static_cast<std::uint16_t>(Lit(Suivant(décalage, 1)) << 8U | bas);
}

void AppareilPorts::EcritMot(std::uint16_t décalage, std::uint16_t mot) {
  Ecrit(décalage, static_cast<std::uint8_t>(mot & 0xFFU));
  Ecrit(Suivant(décalage, 1), static_cast<std::uint8_t>(mot >> 8U));
}

void BusPorts::Attache(std::uint16_t base, std::uint16_t longueur, AppareilPorts& appareil) {
  plages_.push_back({base, longueur, &appareil});
}

const BusPorts::Plage* BusPorts::Trouve(std::uint16_t port) const noexcept {
  for (const Plage& plage : plages_) {
    if (port < plage.base || port >= plage.base + plage.longueur) continue;
    return plage.appareil->pannes.morte ? nullptr : &plage;
  }
  return nullptr;
}

void BusPorts::Note(std::uint16_t port, std::uint32_t valeur, std::uint8_t octets) {
  if (journalise_) écritures_.push_back({passe_, port, valeur, octets});
}

std::uint8_t BusPorts::Inp(std::uint16_t port) {
  const Plage* plage = Trouve(port);
  if (plage == nullptr) return kPersonne;
  return plage->appareil->Lit(static_cast<std::uint16_t>(port - plage->base));
}

std::uint16_t BusPorts::Inpw(std::uint16_t port) {
  const Plage* plage = Trouve(port);
  if (plage == nullptr) return 0xFFFF;
  return plage->appareil->LitMot(static_cast<std::uint16_t>(port - plage->base));
}

std::uint32_t BusPorts::Inpd(std::uint16_t port) {
  const std::uint32_t bas = Inpw(port);
  return std::uint32_t{Inpw(Suivant(port, 2))} << 16U | bas;
}

void BusPorts::Outp(std::uint16_t port, std::uint8_t octet) {
  Note(port, octet, 1);
  const Plage* plage = Trouve(port);
  if (plage == nullptr) return;
  plage->appareil->Ecrit(static_cast<std::uint16_t>(port - plage->base), octet);
}

void BusPorts::Outpw(std::uint16_t port, std::uint16_t mot) {
  Note(port, mot, 2);
  const Plage* plage = Trouve(port);
  if (plage == nullptr) return;
  plage->appareil->EcritMot(static_cast<std::uint16_t>(port - plage->base), mot);
}

void BusPorts::Outpd(std::uint16_t port, std::uint32_t mot) {
  Outpw(port, static_cast<std::uint16_t>(mot & 0xFFFFU));
  Outpw(Suivant(port, 2), static_cast<std::uint16_t>(mot >> 16U));
}

}  // namespace zuma::sim
