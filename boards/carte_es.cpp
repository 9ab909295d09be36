#include "boards/carte_es.h"

#include <string>

namespace zuma {

std::uint16_t CarteES::LitPaire(std::uint16_t bas, std::uint16_t haut) const {
  const unsigned poidsFort = Lit(haut);
  return static_cast<std::uint16_t>(poidsFort * 256 + Lit(bas));
}

void CarteES::EcritPaire(std::uint16_t décalage, std::uint16_t mot) {
  Ecrit(décalage, static_cast<std::uint8_t>(mot & 0xFFU));
  Ecrit(static_cast<std::uint16_t>(décalage + 1), static_cast<std::uint8_t>(mot >> 8U));
}

void CarteES::Attend(double microsecondes) const {
  const Ref<ZED_Timer>& timer = matériel_.timer;
  const double fin = timer->LitMicrosecondes() + microsecondes;
  while (timer->LitMicrosecondes() < fin) {
  }
}

void ExigeVoie(std::int16_t voie, std::int16_t nombre) {
  if (EstUneVoie(voie, nombre)) return;
  throw Echec(Numéro::IndiceHorsPlage, "Voie " + std::to_string(voie) +
                                           " absente de la carte, qui a les voies 0 à " +
                                           std::to_string(nombre - 1));
}

std::uint32_t Masque(std::int16_t voie) {
  ExigeVoie(voie, kBitsDuMot);
  return 1U << static_cast<unsigned>(voie);
}

std::uint32_t AvecBit(std::uint32_t image, std::int16_t voie, bool actif) {
  return actif ? image | Masque(voie) : image & ~Masque(voie);
}

std::uint16_t DécalageSortie(std::int16_t voie, std::int16_t nombre) {
  ExigeVoie(voie, nombre);
  return static_cast<std::uint16_t>(voie * 2);
}

}  // namespace zuma
