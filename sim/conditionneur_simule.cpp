#include "sim/conditionneur_simule.h"

#include <algorithm>
#include <cmath>

namespace zuma::sim {

// The values as they stand when the question has arrived.
Octets ConditionneurSimulé::Traite(std::string_view question) {
  registres.clear();
  std::uint16_t registre = premierRegistre;
  for (const double valeur : valeurs) {
    const auto entier = std::lround(std::clamp(valeur, -32768.0, 32767.0));
    registres[registre++] = static_cast<std::uint16_t>(entier & 0xFFFF);
  }
  return EsclaveModbus::Traite(question);
}

Octets ConditionneurSimulé::LitRegistres(std::uint16_t premier, std::uint16_t nombre) const {
  const bool tout = firmware == Firmware::Trois;
  const auto donnés = tout ? static_cast<std::uint16_t>(valeurs.size()) : nombre;
  Octets données = EsclaveModbus::LitRegistres(premier, donnés);
  if (octetsForcés != 0) {
    données.resize(std::size_t{1} + octetsForcés, '\0');
    données[0] = static_cast<char>(octetsForcés);
  }
  return données;
}

}  // namespace zuma::sim
