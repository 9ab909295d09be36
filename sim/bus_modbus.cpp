#include "sim/bus_modbus.h"

namespace zuma::sim {

EsclaveModbus* BusModbus::Esclave(std::uint8_t adresse) const {
  for (const auto& [sienne, esclave] : esclaves_) {
    if (sienne == adresse) return esclave.Brut();
  }
  return nullptr;
}

void BusModbus::Reçoit(std::string_view octets, LigneSérie& ligne) {
  for (const auto& [adresse, esclave] : esclaves_) esclave->Reçoit(octets, ligne);
}

// All of them heard the same silence.
void BusModbus::Réveil(LigneSérie& ligne) {
  for (const auto& [adresse, esclave] : esclaves_) esclave->Réveil(ligne);
}

void BusModbus::MetEnMarche() {
  for (const auto& [adresse, esclave] : esclaves_) esclave->MetEnMarche();
}

}  // namespace zuma::sim
