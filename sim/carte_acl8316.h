#pragma once

#include "sim/bornes.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// ACL 8316 from its register map. The input stage settles for a while after each change of
/// channel or gain, and the channel latch, read, freezes what it then sees. A scan runs through its
/// channels from wherever it was left; only the multiplexer start brings it back to channel 0.
class CarteACL8316 : public CarteSimulée {
 public:
  /// A board that settles by that clock.
  explicit CarteACL8316(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override;
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;
  [[nodiscard]] std::uint16_t LitMot(std::uint16_t décalage) override;
  void EcritMot(std::uint16_t décalage, std::uint16_t mot) override;

  double horlogeCompteur = 2e6;  ///< hertz
  double stabilisation = 4;      ///< microseconds of the input stage

 private:
  void Change();
  void Fige();
  void Déclenche(std::uint8_t code);
  void CompteOctet(std::uint8_t octet);
  [[nodiscard]] std::uint16_t SuivantDuScan();

  HorlogeVirtuelle& horloge_;
  std::uint8_t gain_ = 0;
  std::uint8_t voie_ = 0;
  std::uint8_t voieStable_ = 0;
  std::uint8_t gainStable_ = 0;
  double heureDuChangement_ = 0;
  std::int16_t résultat_ = 0;
  bool armée_ = false;
  bool figée_ = false;
  unsigned position_ = 0;       ///< in the FIFO
  unsigned compteurVoies_ = 0;  ///< of the multiplexer
  int octetsCompteur_ = 0;
  std::uint16_t diviseur_ = 0;
};

}  // namespace zuma::sim
