#include "sim/cartes_simples.h"

#include <utility>

namespace zuma::sim {
namespace {

constexpr int kCodes12Bits = 4096;
constexpr int kCodes16Bits = 32768;
constexpr std::uint32_t kTirées = 0xFFFFFF;  // 24 lines

std::uint32_t AvecOctet(std::uint32_t mot, unsigned rang, std::uint8_t octet) {
  const unsigned poids = 8 * rang;
  return (mot & ~(0xFFU << poids)) | std::uint32_t{octet} << poids;
}

std::uint8_t OctetDe(std::uint32_t mot, unsigned rang) {
  return static_cast<std::uint8_t>(mot >> (8 * rang) & 0xFFU);
}

}  // namespace

void CarteEntrées12Bits::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  if (décalage == 9) gain_ = octet & 3U;
  if (décalage == 10) voie_ = octet % 32U;
  if (décalage != 12) return;
  départ_ = horloge_.Maintenant();
  ancien_ =
      std::exchange(code_, CodePositif(bornes.entréesAnalogiques[voie_], gain_, kCodes12Bits));
}

std::uint8_t CarteEntrées12Bits::Lit(std::uint16_t décalage) {
  if (décalage == 4) return basFigé_;
  if (décalage != 5) return 0xFF;
  const bool finie = !pannes.bloquée && horloge_.Maintenant() - départ_ >= conversion;
  const auto code = static_cast<std::uint32_t>(finie ? code_ : ancien_);
  basFigé_ = OctetDe(code, 0);
  return static_cast<std::uint8_t>(0xF0U | OctetDe(code, 1));  // the high lines float
}

void CarteSortiesParPaires::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  if (décalage < 2 * voies_) {
    if (décalage % 2 == 0) {
      bas_ = octet;
    } else {
      const int code = (octet & 0x0F) * 256 + bas_;
      bornes.sortiesAnalogiques[décalage / 2U] = code * kVoltsPleineEchelle / kCodes12Bits;
    }
  } else if (logique_ && (décalage == 0x0C || décalage == 0x0D)) {
    bornes.sortiesLogiques = AvecOctet(bornes.sortiesLogiques, décalage - 0x0CU, octet);
  }
}

std::uint8_t CarteSortiesParPaires::Lit(std::uint16_t décalage) {
  if (logique_ && (décalage == 0x0E || décalage == 0x0F)) {
    return OctetDe(pannes.Vues(bornes.entréesLogiques), décalage - 0x0EU);
  }
  return 0xFF;
}

std::uint8_t Interface8255::Lit(unsigned registre, std::uint32_t entrées) const {
  return registre < 3 ? OctetDe(enSortie_ ? verrous_ : entrées, registre) : std::uint8_t{0xFF};
}

void Interface8255::Ecrit(unsigned registre, std::uint8_t octet) {
  if (registre < 3) {
    verrous_ = AvecOctet(verrous_, registre, octet);
  } else if ((octet & 0x80U) != 0) {
    // Bits 0, 1, 3 and 4 make inputs; here all ports go the same way.
    enSortie_ = (octet & 0x1BU) == 0;
    if (perdSesVerrous_) verrous_ = 0;
  }
}

CartePCL731::CartePCL731() {
  bornes.sortiesLogiques = kTirées;
}

std::uint8_t CartePCL731::Lit(std::uint16_t décalage) {
  if (décalage >= 8) return 0xFF;
  const std::uint32_t lignes = décalage < 4 ? pannes.Vues(bornes.entréesLogiques) : kTirées;
  return interfaces_[décalage / 4U].Lit(décalage % 4U, lignes);
}

void CartePCL731::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  if (décalage >= 8) return;
  interfaces_[décalage / 4U].Ecrit(décalage % 4U, octet);
  bornes.sortiesLogiques = interfaces_[1].EnSortie() ? interfaces_[1].Lignes() : kTirées;
}

std::optional<std::uint32_t> CartePCL731::PremierConnecteur() const {
  if (!interfaces_[0].EnSortie()) return {};
  return interfaces_[0].Lignes();
}

std::uint8_t CartePET48::Lit(std::uint16_t décalage) {
  return décalage == 1 && choisi_ < 8
             ? interfaces_[choisi_ / 4U].Lit(choisi_ % 4U, pannes.Vues(bornes.entréesLogiques))
             : std::uint8_t{0xFF};
}

void CartePET48::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  if (décalage == 0) choisi_ = octet;
  if (décalage != 1 || choisi_ >= 8) return;
  interfaces_[choisi_ / 4U].Ecrit(choisi_ % 4U, octet);
  bornes.sortiesLogiques = interfaces_[1].EnSortie() ? interfaces_[1].Lignes() : 0;
}

void CarteA826::Ecrit(std::uint16_t décalage, std::uint8_t octet) {
  if (décalage == 9) gain_ = octet & 3U;
  if (décalage == 10) voie_ = octet % 16U;
  if (décalage == 0x0B) enMode_ = octet == 1;
  if (décalage != 12 || !enMode_) return;
  départ_ = horloge_.Maintenant();
  ancien_ = std::exchange(code_, CodeSigné(bornes.entréesAnalogiques[voie_], gain_, kCodes16Bits));
}

std::uint16_t CarteA826::LitMot(std::uint16_t décalage) {
  if (décalage == 6)
    return static_cast<std::uint16_t>(pannes.Vues(bornes.entréesLogiques) & 0xFFFFU);
  if (décalage != 4) return 0xFFFF;
  const bool finie = !pannes.bloquée && horloge_.Maintenant() - départ_ >= conversion;
  return static_cast<std::uint16_t>(finie ? code_ : ancien_);
}

void CarteA826::EcritMot(std::uint16_t décalage, std::uint16_t mot) {
  if (décalage == 4 || décalage == 6) {
    bornes.sortiesAnalogiques[(décalage - 4U) / 2] =
        (mot & 0x0FFFU) * kVoltsPleineEchelle / kCodes12Bits;
  } else if (décalage == 0x0D) {
    bornes.sortiesLogiques = mot;
  }
}

}  // namespace zuma::sim
