#pragma once

#include <array>
#include <cstdint>

#include "platform/reglages.h"
#include "sim/bornes.h"

namespace zuma::sim {

/// IK 121 from its register map: two axes of four ports each, whose sixteen words are seen four
/// ports at a time, the page being written at port 8 for both. A counter runs from 0 once it was
/// initialised, reset and started, in that order. A latch that was requested takes the count at
/// once and shows it a few looks at the status later, the one before until then.
///
/// An encoder stands at the analog input terminal of its axis (0 and 1): 10 V are its whole travel.
class CarteIK121 : public CarteSimulée {
 public:
  /// A board that takes the control words of these settings.
  explicit CarteIK121(const RéglagesIK121& réglages = {}) : réglages_(réglages) {}

  /// Counts of an encoder whose terminal is at that voltage.
  [[nodiscard]] static std::int64_t Position(double volts);

  [[nodiscard]] std::uint8_t Lit(std::uint16_t) override { return 0xFF; }
  void Ecrit(std::uint16_t, std::uint8_t) override {}
  [[nodiscard]] std::uint16_t LitMot(std::uint16_t décalage) override;
  void EcritMot(std::uint16_t décalage, std::uint16_t mot) override;

  int regardsAvantPrêt = 2;      ///< looks at the status that find a requested latch empty
  std::array<int, 2> départs{};  ///< complete starts of each axis

 private:
  struct Latch {
    std::int64_t ancien = 0;  ///< shown until the latch holds `compte`
    std::int64_t compte = 0;
    int attente = -1;  ///< looks still to come; negative while the latch holds nothing
  };
  struct Axe {
    unsigned étape = 0;  ///< of its start
    std::int64_t origine = 0;
    std::array<Latch, 2> latchs;
  };
  [[nodiscard]] std::uint16_t LitAxe(std::size_t axe, unsigned registre);
  [[nodiscard]] std::uint16_t Etat(Axe& axe) const;
  void Commande(std::size_t axe, std::uint16_t mot);

  RéglagesIK121 réglages_;
  unsigned page_ = 0;
  std::array<Axe, 2> axes_;
};

}  // namespace zuma::sim
