#include "sim/carte_acl8316.h"

namespace zuma::sim {
namespace {

constexpr int kCodes = 32768;
constexpr unsigned kVoies = 16;
// Where a scan that is stopped leaves the channel counter.
constexpr unsigned kVoiesEntamées = 5;

}  // namespace

void CarteACL8316::Change() {
  if (horloge_.Maintenant() - heureDuChangement_ >= stabilisation) {
    voieStable_ = voie_;
    gainStable_ = gain_;
  }
  heureDuChangement_ = horloge_.Maintenant();
}

void CarteACL8316::Fige() {
  if (horloge_.Maintenant() - heureDuChangement_ >= stabilisation) {
    voieStable_ = voie_;
    gainStable_ = gain_;
  }
  résultat_ = static_cast<std::int16_t>(
      CodeSigné(bornes.entréesAnalogiques[voieStable_ % kVoies], gainStable_, kCodes));
}

std::uint8_t CarteACL8316::Lit(std::uint16_t décalage) {
  if (décalage == 8) return figée_ && !pannes.bloquée ? 0x10 : 0;
  if (décalage == 10) {
    Fige();
    return 0;
  }
  return 0xFF;
}

std::uint16_t CarteACL8316::LitMot(std::uint16_t décalage) {
  if (décalage == 4) return static_cast<std::uint16_t>(résultat_);
  if (décalage == 6) return SuivantDuScan();
  if (décalage == 14)
    return static_cast<std::uint16_t>(pannes.Vues(bornes.entréesLogiques) & 0xFFFFU);
  return 0xFFFF;
}

// The FIFO holds what was scanned before the trigger was cleared; a scan still running gives the
// word on its way, which belongs to nobody.
std::uint16_t CarteACL8316::SuivantDuScan() {
  if (!figée_) return 0xFFFF;
  const unsigned voie = position_++ % kVoies;
  return static_cast<std::uint16_t>(CodeSigné(bornes.entréesAnalogiques[voie], gain_, kCodes));
}

void CarteACL8316::CompteOctet(std::uint8_t octet) {
  diviseur_ = octetsCompteur_ == 0
                  ? octet
                  : static_cast<std::uint16_t>(diviseur_ | (std::uint16_t{octet} << 8U));
  if (++octetsCompteur_ == 2) bornes.fréquence = diviseur_ == 0 ? 0 : horlogeCompteur / diviseur_;
}

void CarteACL8316::Déclenche(std::uint8_t code) {
  if (code == 5) {
    armée_ = true;
    figée_ = false;
    position_ = compteurVoies_;
  } else if (code == 0) {
    if (armée_) compteurVoies_ += kVoiesEntamées;
    figée_ = armée_;
    armée_ = false;
  }
}

void CarteACL8316::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  switch (décalage) {
    case 0:
      CompteOctet(octet);
      break;
    case 3:
      octetsCompteur_ = 0;
      bornes.fréquence = 0;
      break;
    case 8:
      if (octet == 0) compteurVoies_ = 0;
      break;
    case 9:
      Change();
      gain_ = octet & 3U;
      break;
    case 10:
      Change();
      voie_ = octet;
      break;
    case 12:
      Déclenche(octet);
      break;
    default:
      break;
  }
}

void CarteACL8316::EcritMot(std::uint16_t décalage, std::uint16_t mot) {
  if (décalage == 4 || décalage == 6) {
    bornes.sortiesAnalogiques[(décalage - 4U) / 2] =
        static_cast<std::int16_t>(mot) * kVoltsPleineEchelle / 32768;
  } else if (décalage == 14) {
    bornes.sortiesLogiques = mot;
  } else {
    AppareilPorts::EcritMot(décalage, mot);
  }
}

}  // namespace zuma::sim
