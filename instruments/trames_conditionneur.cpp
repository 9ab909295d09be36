#include "instruments/trames_conditionneur.h"

namespace zuma::trames_conditionneur {

double ValeurDuCanal(const OutilsModbus::Valeurs& octets, std::int32_t index) {
  const double mot = octets.Item(2 * index + 1) * 256 + octets.Item(2 * index + 2);
  return mot > 32767 ? mot - 65536 : mot;
}

}  // namespace zuma::trames_conditionneur
