#include "boards/acl_8316.h"

#include "boards/gain_automatique.h"

namespace zuma {
namespace {

// Registers, from the base.
constexpr std::uint16_t kCompteur = 0;
constexpr std::uint16_t kCommandeCompteur = 3;
constexpr std::uint16_t kAnalogique = 4;  // result; outputs from here on
constexpr std::uint16_t kFIFO = 6;
constexpr std::uint16_t kEtatMultiplexeur = 8;
constexpr std::uint16_t kGain = 9;
constexpr std::uint16_t kVoie = 10;
constexpr std::uint16_t kDéclenchement = 12;
constexpr std::uint16_t kRéglageSorties = 0x0D;
constexpr std::uint16_t kLogique = 14;

constexpr std::uint8_t kOndeCarrée = 0x36;
constexpr std::uint8_t kDernièreVoie = 0x0F;
constexpr std::uint8_t kDéclenchementNul = 0;
constexpr std::uint8_t kDéclenchementLogiciel = 1;
constexpr std::uint8_t kDéclenchementScan = 5;

constexpr double kRéglageSortiesDurée = 100'000;  // microseconds
constexpr std::int16_t kSorties = 2;

}  // namespace

void ACL_8316::DémarreAnalogique(bool scan) {
  // A program started again may find the former one's scan running: it would move the channel
  // counter after the multiplexer start and shift the first scan.
  Ecrit(kDéclenchement, kDéclenchementNul);
  ArrêteFréquence();
  Ecrit(kEtatMultiplexeur, 0);
  if (!scan) return;
  Ecrit(kEtatMultiplexeur, 1);
  Ecrit(kEtatMultiplexeur, 0);
  Ecrit(kGain, 0);  // a scan has one gain, whatever a conversion before it left
  Ecrit(kDéclenchement, kDéclenchementNul);
  Ecrit(kVoie, kDernièreVoie);
  Ecrit(kDéclenchement, kDéclenchementScan);
}

double ACL_8316::Convertit(std::int16_t voie, std::int16_t gain) {
  const double stabilisation = LeMatériel().plateforme.réglages.stabilisationACL8316;
  Attend(stabilisation);
  Ecrit(kGain, static_cast<std::uint8_t>(gain));
  Attend(stabilisation);
  Ecrit(kVoie, static_cast<std::uint8_t>(voie));
  Attend(stabilisation);
  (void)Lit(kVoie);  // clears the channel latch
  Attend(stabilisation);
  return static_cast<std::int16_t>(LitMot(kAnalogique));
}

double ACL_8316::LitAnalogique(std::int16_t voie, std::int16_t& gain) {
  ExigeVoie(voie, kVoies);
  return LitAvecGain(gain, kSeuils16Bits,
                     [&](std::int16_t essayé) { return Convertit(voie, essayé); });
}

void ACL_8316::LitScan(int lectures, Sommes& sommes) {
  Ecrit(kDéclenchement, kDéclenchementNul);
  for (int lecture = 0; lecture < lectures; ++lecture) {
    for (std::size_t voie = 0; voie < kVoies; ++voie) {
      sommes[voie] += static_cast<std::int16_t>(LitMot(kFIFO));
    }
  }
  (void)Lit(kEtatMultiplexeur);  // takes the end of scan flag away
  Ecrit(kEtatMultiplexeur, 0);
  Ecrit(kEtatMultiplexeur, 1);
  Ecrit(kDéclenchement, kDéclenchementLogiciel);
  Ecrit(kDéclenchement, kDéclenchementScan);
}

void ACL_8316::DémarreSortiesAnalogiques() {
  Ecrit(kRéglageSorties, 0x02);
  Attend(kRéglageSortiesDurée);
  for (std::int16_t voie = 0; voie < kSorties; ++voie) EcritAnalogique(voie, 0);
}

void ACL_8316::EcritAnalogique(std::int16_t voie, std::int16_t valeur) {
  const int signée = Signé12Bits(valeur);
  EcritMot(static_cast<std::uint16_t>(kAnalogique + DécalageSortie(voie, kSorties)),
           static_cast<std::uint16_t>(VersEntier16(signée * 16.0)));
}

void ACL_8316::ProgrammeFréquence(double hertz) {
  const double diviseur =
      hertz > 0 ? std::trunc(LeMatériel().plateforme.réglages.horlogeACL8316 / hertz) : 0;
  ArrêteFréquence();
  if (!(diviseur >= 1 && diviseur <= 65535)) return;
  const auto mot = static_cast<std::uint16_t>(diviseur);
  Ecrit(kCompteur, static_cast<std::uint8_t>(mot & 0xFFU));
  Ecrit(kCompteur, static_cast<std::uint8_t>(mot >> 8U));
}

// The control word alone leaves the counter waiting for a divisor: its output stands still.
void ACL_8316::ArrêteFréquence() {
  Ecrit(kCommandeCompteur, kOndeCarrée);
}

void ACL_8316::EcritSorties(std::uint32_t image) {
  imageSorties_ = image;
  EcritMot(kLogique, static_cast<std::uint16_t>(image & 0xFFFFU));
}

}  // namespace zuma
