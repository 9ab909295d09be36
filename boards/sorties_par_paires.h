#pragma once

#include <cstdint>

#include "boards/carte_es.h"

namespace zuma {

/// Analog outputs by byte pairs, at two offsets a channel, low byte first. A board whose outputs
/// need no start.
template <std::int16_t kVoies>
class SortiesParPaires : public CarteES {
 public:
  using CarteES::CarteES;
  void DémarreSortiesAnalogiques() {}
  void EcritAnalogique(std::int16_t voie, std::int16_t valeur) {
    EcritPaire(DécalageSortie(voie, kVoies), static_cast<std::uint16_t>(valeur));
  }
};

/// ACL 6128 and PCL 728: analog outputs alone, as many as their 16 ports hold.
class ACL_6128 : public SortiesParPaires<8> {
  using SortiesParPaires::SortiesParPaires;
};
class PCL_728 : public SortiesParPaires<8> {
  using SortiesParPaires::SortiesParPaires;
};

}  // namespace zuma
