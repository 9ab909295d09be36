#include "sim/cartes_pci.h"

#include <algorithm>

namespace zuma::sim {
namespace {

constexpr std::uint16_t kPremièrePoignée = 0x40;

constexpr int kCodes16Bits = 32768;
constexpr int kCodes12Bits = 4096;
constexpr std::uint16_t kVoies9111 = 16;
constexpr std::uint16_t kGains9111 = 5;
constexpr std::uint16_t kVoies6208 = 8;
constexpr std::uint16_t kSourceLogicielle = 1;

// Logic ports of the 9111: first line and number of lines.
struct Port {
  unsigned première;
  unsigned lignes;
  [[nodiscard]] std::uint32_t Masque() const { return (1U << lignes) - 1; }
};
const Port* LePort(std::uint16_t port) {
  static constexpr std::array<Port, 2> kPorts{{{0, 16}, {16, 4}}};
  return port < kPorts.size() ? &kPorts[port] : nullptr;
}

bool TientSur12Bits(std::int16_t valeur) {
  return valeur >= -kCodes12Bits / 2 && valeur < kCodes12Bits / 2;
}

double VoltsSur12Bits(std::int16_t valeur, bool bipolaire) {
  if (bipolaire) return 2 * valeur * kVoltsPleineEchelle / kCodes12Bits;
  return (valeur < 0 ? valeur + kCodes12Bits : valeur) * kVoltsPleineEchelle / kCodes12Bits;
}

}  // namespace

CartePCISimulée& BibliothèquePCISimulée::Enfiche(std::uint16_t type, std::uint16_t numéro) {
  CartePCISimulée& carte = cartes_[{type, numéro}];
  carte.type = type;
  return carte;
}

void BibliothèquePCISimulée::Graine(std::uint32_t graine) {
  for (auto& [place, carte] : cartes_)
    carte.pannes.hasard = Hasard::De(graine, place.first * 256U + place.second);
}

void BibliothèquePCISimulée::Applique(std::span<const PannePrévue> pannes, double secondes) {
  for (auto& [place, carte] : cartes_) {
    sim::Applique(
        pannes, secondes, [](const PannePrévue& panne) { return panne.FrappeLesCartes(); },
        carte.pannes);
  }
}

std::int16_t BibliothèquePCISimulée::Refuse() {
  ++refus;
  return kAppelRefusé;
}

CartePCISimulée* BibliothèquePCISimulée::La(std::uint16_t poignée, std::uint16_t type) {
  const std::size_t rang = static_cast<std::size_t>(poignée) - kPremièrePoignée;
  if (refuseTout || rang >= enregistrées_.size() || enregistrées_[rang] == nullptr) {
    return nullptr;
  }
  CartePCISimulée& carte = *enregistrées_[rang];
  return carte.type == type && !carte.pannes.morte ? &carte : nullptr;
}

std::int16_t BibliothèquePCISimulée::Register_Card(std::uint16_t type, std::uint16_t numéro) {
  const auto trouvée = cartes_.find({type, numéro});
  if (trouvée == cartes_.end() || trouvée->second.pannes.morte) return kCarteAbsente;
  CartePCISimulée* const carte = &trouvée->second;
  std::ranges::replace(enregistrées_, carte, nullptr);
  enregistrées_.push_back(carte);
  return static_cast<std::int16_t>(kPremièrePoignée + enregistrées_.size() - 1);
}

std::int16_t BibliothèquePCISimulée::AI_9111_Config(std::uint16_t carte, std::uint16_t source,
                                                    std::uint16_t mode, std::uint16_t trace) {
  CartePCISimulée* la = La(carte, kType9111);
  if (la == nullptr || source != kSourceLogicielle || mode != 0 || trace != 0) return Refuse();
  la->entréesPrêtes = true;
  return 0;
}

std::int16_t BibliothèquePCISimulée::AI_ReadChannel(std::uint16_t carte, std::uint16_t canal,
                                                    std::uint16_t gain, std::uint16_t& valeur) {
  const CartePCISimulée* la = La(carte, kType9111);
  if (la == nullptr || !la->entréesPrêtes || la->pannes.bloquée) return Refuse();
  if (canal >= kVoies9111 || gain < 1 || gain > kGains9111) return Refuse();
  valeur = static_cast<std::uint16_t>(
      CodeSigné(la->bornes.entréesAnalogiques[canal], gain - 1U, kCodes16Bits));
  return 0;
}

std::int16_t BibliothèquePCISimulée::AO_9111_Config(std::uint16_t carte, std::uint16_t polarité) {
  CartePCISimulée* la = La(carte, kType9111);
  if (la == nullptr || polarité > 1) return Refuse();
  la->sortiesBipolaires = polarité == 1;
  la->sortiesPrêtes = true;
  return 0;
}

std::int16_t BibliothèquePCISimulée::AO_WriteChannel(std::uint16_t carte, std::uint16_t canal,
                                                     std::int16_t valeur) {
  CartePCISimulée* la = La(carte, kType9111);
  if (la != nullptr && la->sortiesPrêtes && canal == 0 && TientSur12Bits(valeur)) {
    la->bornes.sortiesAnalogiques[0] = VoltsSur12Bits(valeur, la->sortiesBipolaires);
    return 0;
  }
  la = La(carte, kType6208V);
  if (la == nullptr || canal >= kVoies6208) return Refuse();
  la->bornes.sortiesAnalogiques[canal] = valeur * kVoltsPleineEchelle / kCodes16Bits;
  return 0;
}

std::int16_t BibliothèquePCISimulée::DI_ReadPort(std::uint16_t carte, std::uint16_t port,
                                                 std::uint32_t& mot) {
  CartePCISimulée* la = La(carte, kType9111);
  const Port* lePort = LePort(port);
  if (la == nullptr || lePort == nullptr) return Refuse();
  const std::uint32_t lignes = la->pannes.Vues(la->bornes.entréesLogiques) >> lePort->première;
  mot = (lignes & lePort->Masque()) | (0xFFFFU & ~lePort->Masque());
  return 0;
}

std::int16_t BibliothèquePCISimulée::DI_ReadLine(std::uint16_t carte, std::uint16_t port,
                                                 std::uint16_t ligne, std::uint16_t& état) {
  std::uint32_t mot = 0;
  const Port* lePort = LePort(port);
  if (lePort == nullptr || ligne >= lePort->lignes) return Refuse();
  const std::int16_t réponse = DI_ReadPort(carte, port, mot);
  if (réponse == 0) état = static_cast<std::uint16_t>(mot >> ligne & 1U);
  return réponse;
}

std::int16_t BibliothèquePCISimulée::DO_WritePort(std::uint16_t carte, std::uint16_t port,
                                                  std::uint32_t mot) {
  CartePCISimulée* la = La(carte, kType9111);
  const Port* lePort = LePort(port);
  if (la == nullptr || lePort == nullptr || port == la->portMort) return Refuse();
  const std::uint32_t masque = lePort->Masque() << lePort->première;
  la->bornes.sortiesLogiques =
      (la->bornes.sortiesLogiques & ~masque) | (mot << lePort->première & masque);
  la->motsEcrits[port] = mot;
  ++la->écritures;
  return 0;
}

std::int16_t BibliothèquePCISimulée::DO_WriteLine(std::uint16_t carte, std::uint16_t port,
                                                  std::uint16_t ligne, std::uint16_t état) {
  CartePCISimulée* la = La(carte, kType9111);
  const Port* lePort = LePort(port);
  if (la == nullptr || lePort == nullptr || ligne >= lePort->lignes || état > 1) {
    return Refuse();
  }
  const std::uint32_t bit = 1U << (lePort->première + ligne);
  std::uint32_t& lignes = la->bornes.sortiesLogiques;
  lignes = état == 1 ? lignes | bit : lignes & ~bit;
  return 0;
}

}  // namespace zuma::sim
