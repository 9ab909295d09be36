#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// Analog outputs by byte pairs, at two offsets a channel, low byte first. A board whose outputs
/// need no start.
template <std::int16_t kVoies>
class SortiesParPaires : public CarteES {
 public:
  /// The board at a base address.
  using CarteES::CarteES;
  /// Nothing to prepare.
  void DémarreSortiesAnalogiques() {}
  /// Writes the code of an output; a channel that the board lacks fails with 9.
  void EcritAnalogique(std::int16_t voie, std::int16_t valeur) {
    EcritPaire(DécalageSortie(voie, kVoies), static_cast<std::uint16_t>(valeur));
  }
};

/// ACL 6128: 8 analog outputs.
class ACL_6128 : public SortiesParPaires<8> {
  using SortiesParPaires::SortiesParPaires;
};
/// PCL 728: 8 analog outputs.
class PCL_728 : public SortiesParPaires<8> {
  using SortiesParPaires::SortiesParPaires;
};

}  // namespace zuma
