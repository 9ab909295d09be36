#pragma once

#include <cstdint>

#include "boards/carte_es.h"
#include "boards/exacticks.h"

namespace zuma {

/// Registers that the 12-bit input boards share: 32 analog inputs with four gains.
class Entrées12Bits : public CarteES {
 public:
  /// Counts of a whole conversion.
  static constexpr double kPleineEchelle = 4096;
  /// Analog inputs.
  static constexpr std::int16_t kVoies = 32;

  /// The board at a base address.
  using CarteES::CarteES;

 protected:
  /// One conversion with automatic range, in counts of gain 1. The board's own waits come after
  /// the selection and after the start of a conversion. A channel out of 0 to 31 fails with 9: it
  /// would read whatever channel was selected last.
  template <class ApresSélection, class ApresDépart>
  double Lit12Bits(std::int16_t voie, std::int16_t& gain, ApresSélection&& aprèsSélection,
                   ApresDépart&& aprèsDépart);

 private:
  void Sélectionne(std::int16_t voie, std::int16_t gain);
  void Lance();
  [[nodiscard]] double Résultat() const;
};

/// ACL 8113: its waits run on a fine counter of its own.
class ACL_8113 : public Entrées12Bits {
 public:
  using Entrées12Bits::Entrées12Bits;
  /// Opens the counter; a former one is closed.
  void DémarreAnalogique(bool scan);
  /// One conversion with automatic range, see `Lit12Bits`.
  [[nodiscard]] double LitAnalogique(std::int16_t voie, std::int16_t& gain);

 private:
  Exacticks HandleTimer_;
};

/// PCL 813 B: the same registers, one wait on the frame's timer.
class PCL_813B : public Entrées12Bits {
 public:
  using Entrées12Bits::Entrées12Bits;
  /// Nothing to prepare.
  void DémarreAnalogique(bool) {}
  /// One conversion with automatic range, see `Lit12Bits`.
  [[nodiscard]] double LitAnalogique(std::int16_t voie, std::int16_t& gain);
};

}  // namespace zuma
