#include "sim/bus_modbus.h"

namespace zuma::sim {

EsclaveModbus* BusModbus::Esclave(std::uint8_t adresse) const {
  for (const auto& [sienne, esclave] : esclaves_) {
    if (sienne == adresse) return esclave.Brut();
  }
  return nullptr;
}

void BusModbus::Reçoit(std::string_view octets, std::int32_t vitesse) {
  for (const auto& [adresse, esclave] : esclaves_) esclave->Reçoit(octets, vitesse);
}

Octets BusModbus::Emet() {
  Octets octets;
  for (const auto& [adresse, esclave] : esclaves_) octets += esclave->Emet();
  return octets;
}

}  // namespace zuma::sim
