#pragma once

#include <cstdint>

#include "boards/carte_pci.h"

namespace zuma {

/// PCI 6208 V: analog outputs of 16 bits.
class PCI_6208_V : public CartePCI {
 public:
  /// The board of a handle.
  using CartePCI::CartePCI;

  /// Outputs 0 to 5 to 0.
  void DémarreSortiesAnalogiques();
  /// True when the library took it.
  bool EcritAnalogique(std::int16_t voie, std::int16_t valeur);
};

}  // namespace zuma
