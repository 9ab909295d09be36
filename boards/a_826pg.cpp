#include "boards/a_826pg.h"

namespace zuma {
namespace {

constexpr std::uint16_t kAnalogique = 4;  // result; outputs from here on
constexpr std::uint16_t kGain = 9;
constexpr std::uint16_t kVoie = 10;
constexpr std::uint16_t kMode = 0x0B;
constexpr std::uint16_t kDépart = 12;
constexpr std::uint16_t kSortiesLogiques = 0x0D;

constexpr double kAttente = 10;                     // microseconds, on both sides of a start
constexpr double kStabilisationDépart = 1'000'000;  // microseconds
constexpr std::int16_t kSorties = 2;

}  // namespace

void A_826PG::DémarreAnalogique(bool) {
  Ecrit(kGain, 0);
  Ecrit(kMode, 1);
  Attend(kStabilisationDépart);
}

double A_826PG::LitAnalogique(std::int16_t voie, std::int16_t& gain) {
  ExigeVoie(voie, kVoies);
  Ecrit(kGain, static_cast<std::uint8_t>(gain));
  Ecrit(kVoie, static_cast<std::uint8_t>(voie));
  Attend(kAttente);
  Ecrit(kDépart, 0);
  Attend(kAttente);
  return static_cast<std::int16_t>(LitMot(kAnalogique));
}

void A_826PG::EcritAnalogique(std::int16_t voie, std::int16_t valeur) {
  EcritMot(static_cast<std::uint16_t>(kAnalogique + DécalageSortie(voie, kSorties)),
           static_cast<std::uint16_t>(valeur));
}

void A_826PG::EcritSorties(std::uint32_t image) {
  imageSorties_ = image;
  EcritMot(kSortiesLogiques, static_cast<std::uint16_t>(image & 0xFFFFU));
}

}  // namespace zuma
