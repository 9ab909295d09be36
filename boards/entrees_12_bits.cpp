#include "boards/entrees_12_bits.h"

#include "boards/gain_automatique.h"

namespace zuma {
namespace {

constexpr std::uint16_t kRésultatBas = 4;
constexpr std::uint16_t kRésultatHaut = 5;
constexpr std::uint16_t kGain = 9;
constexpr std::uint16_t kVoie = 10;
constexpr std::uint16_t kDépart = 12;
constexpr std::uint8_t kDépartLogiciel = 0xFF;

// Microseconds.
constexpr std::int64_t kAttenteSélection8113 = 10;
constexpr std::int64_t kAttenteConversion8113 = 40;
constexpr double kAttenteConversion813 = 35;

}  // namespace

void Entrées12Bits::Sélectionne(std::int16_t voie, std::int16_t gain) {
  Ecrit(kGain, static_cast<std::uint8_t>(gain));
  Ecrit(kVoie, static_cast<std::uint8_t>(voie));
}

void Entrées12Bits::Lance() {
  Ecrit(kDépart, kDépartLogiciel);
}

// The high nibble must be read first.
double Entrées12Bits::Résultat() const {
  const unsigned haut = Lit(kRésultatHaut) & 0x0FU;
  return haut * 256 + Lit(kRésultatBas);
}

template <class ApresSélection, class ApresDépart>
double Entrées12Bits::Lit12Bits(std::int16_t voie, std::int16_t& gain,
                                ApresSélection&& aprèsSélection, ApresDépart&& aprèsDépart) {
  ExigeVoie(voie, kVoies);
  return LitAvecGain(gain, kSeuils12Bits, [&](std::int16_t essayé) {
    Sélectionne(voie, essayé);
    aprèsSélection();
    Lance();
    aprèsDépart();
    return Résultat();
  });
}

void ACL_8113::DémarreAnalogique(bool) {
  HandleTimer_.Ouvre(LeMatériel().plateforme.compteurs, "ACL8113-" + std::to_string(Port(0)));
}

double ACL_8113::LitAnalogique(std::int16_t voie, std::int16_t& gain) {
  return Lit12Bits(
      voie, gain, [&] { HandleTimer_.Attend(kAttenteSélection8113); },
      [&] { HandleTimer_.Attend(kAttenteConversion8113); });
}

double PCL_813B::LitAnalogique(std::int16_t voie, std::int16_t& gain) {
  return Lit12Bits(voie, gain, [] {}, [&] { Attend(kAttenteConversion813); });
}

}  // namespace zuma
