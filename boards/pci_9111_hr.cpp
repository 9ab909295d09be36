#include "boards/pci_9111_hr.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/garde.h"
#include "boards/gain_automatique.h"
#include "boards/operations.h"
#include "tree/carte.h"

namespace zuma {
namespace {

constexpr PlageDeGains kGains{1, 5};

constexpr std::int16_t kLignesPort0 = 16;
constexpr std::uint32_t kMasquePort0 = 0xFFFF;
constexpr std::uint32_t kMasqueEntréesPort1 = 0x0F;
constexpr std::uint32_t kMasqueSortiesPort0 = 0xF0FFFF;

// Line of a channel: 16 on port 0, then those of port 1.
struct LigneDePort {
  std::uint16_t port, ligne;
};
LigneDePort LigneDe(std::int16_t voie) {
  ExigeVoie(voie, kBitsDuMot);
  const bool second = voie >= kLignesPort0;
  return {.port = static_cast<std::uint16_t>(second ? 1 : 0),
          .ligne = static_cast<std::uint16_t>(second ? voie - kLignesPort0 : voie)};
}

}  // namespace

void PCI_9111_HR::DémarreAnalogique(bool) {
  Lib().AI_9111_Config(Poignée(), 1, 0, 0);
}

double PCI_9111_HR::LitAnalogique(std::int16_t voie, std::int16_t& gain, std::int16_t lectures) {
  gain = std::clamp(gain, kGains.premier, kGains.dernier);
  const int nombre = std::max<int>(lectures, 1);
  double somme = 0;
  for (int i = 0; i < nombre; ++i) {
    somme += LitAvecGain(
        gain, kSeuils16Bits,
        [&](std::int16_t essayé) {
          std::uint16_t mot = 0;
          const bool lu = Lib().AI_ReadChannel(Poignée(), static_cast<std::uint16_t>(voie),
                                               static_cast<std::uint16_t>(essayé), mot) == 0;
          return lu ? static_cast<std::int16_t>(mot) : std::numeric_limits<double>::quiet_NaN();
        },
        kGains);
  }
  return somme / nombre;
}

bool PCI_9111_HR::EcritAnalogique(std::int16_t, std::int16_t valeur) {
  Lib().AO_9111_Config(Poignée(), LesRéglages().polaritéPCI9111);
  const int signée = Signé12Bits(valeur);
  return Lib().AO_WriteChannel(Poignée(), 0, static_cast<std::int16_t>(signée)) == 0;
}

std::uint32_t PCI_9111_HR::LitEntrées() {
  std::uint32_t port0 = 0;
  std::uint32_t port1 = 0;
  lues_ = Lib().DI_ReadPort(Poignée(), 0, port0) == 0 ? kMasquePort0 : 0;
  if (Lib().DI_ReadPort(Poignée(), 1, port1) == 0) lues_ |= ~kMasquePort0;
  return port0 | (port1 & kMasqueEntréesPort1) << kLignesPort0;
}

bool PCI_9111_HR::LitEntrée(std::int16_t voie) {
  const LigneDePort ligne = LigneDe(voie);
  std::uint16_t état = 0;
  const bool lue = Lib().DI_ReadLine(Poignée(), ligne.port, ligne.ligne, état) == 0;
  lues_ = lue ? Masque(voie) : 0;
  return état != 0;
}

void PCI_9111_HR::DémarreSorties() {
  imageSorties_.reset();
  (void)EcritSorties(0);
}

// Lines 20 to 23 go to port 0 as well: the mask must stay as it is.
bool PCI_9111_HR::EcritSorties(std::uint32_t image) {
  if (imageSorties_ == image) return true;
  imageSorties_.reset();
  const std::int16_t port0 = Lib().DO_WritePort(Poignée(), 0, image & kMasqueSortiesPort0);
  const std::int16_t port1 = Lib().DO_WritePort(Poignée(), 1, image >> kLignesPort0);
  if (port0 == 0 && port1 == 0) imageSorties_ = image;
  return imageSorties_.has_value();
}

bool PCI_9111_HR::EcritSortie(std::int16_t voie, bool active) {
  const LigneDePort ligne = LigneDe(voie);
  imageSorties_.reset();
  return Lib().DO_WriteLine(Poignée(), ligne.port, ligne.ligne, active ? 1 : 0) == 0;
}

namespace pilotes {
namespace {

// The handle of a board that is missing is that of no board: its inputs keep what they hold.
void DémarreCarte9111(Carte& carte) {
  const std::int32_t numéro = carte.Adresse();
  const std::int16_t réponse = EnregistreCartePCI(carte, BibliothèquePCI::kType9111);
  if (réponse >= 0) return;
  Consigne(carte, Forme::Méthode, "Initialise",
           "Carte PCI 9111 n° " + std::to_string(numéro) + " absente (réponse " +
               std::to_string(réponse) + ")");
}

}  // namespace

const OpérationsCarte kPCI9111Carte{.démarre = &DémarreCarte9111};

}  // namespace pilotes
}  // namespace zuma
