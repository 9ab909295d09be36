#include "sim/carte_ik121.h"

#include <cmath>

namespace zuma::sim {
namespace {

constexpr double kComptesParVolt = 10'000;

constexpr std::uint16_t kPortDePage = 8;
constexpr unsigned kInitialisation = 0x0C;
constexpr unsigned kCommandeEtat = 0x0E;
constexpr unsigned kFinDesLatchs = 0x0C;
constexpr unsigned kMotsParLatch = 3;
constexpr std::uint16_t kBusVide = 0xFFFF;

constexpr unsigned kInitialisé = 1;  // steps of a start
constexpr unsigned kEnMarche = 4;

}  // namespace

std::int64_t CarteIK121::Position(double volts) {
  return std::llround(volts * kComptesParVolt);
}

std::uint16_t CarteIK121::LitMot(std::uint16_t décalage) {
  if (décalage >= kPortDePage) return kBusVide;
  return LitAxe(décalage / 4U, 4 * page_ + décalage % 4U);
}

std::uint16_t CarteIK121::LitAxe(std::size_t axe, unsigned registre) {
  if (registre == kCommandeEtat) return Etat(axes_[axe]);
  if (registre >= kFinDesLatchs || registre % 2 != 0) return kBusVide;
  const unsigned mot = registre / 2;
  const Latch& latch = axes_[axe].latchs[mot / kMotsParLatch];
  const std::int64_t compte = latch.attente == 0 ? latch.compte : latch.ancien;
  return static_cast<std::uint16_t>(compte >> 16U * (mot % kMotsParLatch) & 0xFFFF);
}

std::uint16_t CarteIK121::Etat(Axe& axe) const {
  if (pannes.bloquée) return 0;
  unsigned état = 0;
  for (std::size_t i = 0; i < axe.latchs.size(); ++i) {
    int& attente = axe.latchs[i].attente;
    if (attente == 0) état |= 1U << i;
    if (attente > 0) --attente;
  }
  return static_cast<std::uint16_t>(état);
}

void CarteIK121::EcritMot(std::uint16_t décalage, std::uint16_t mot) {
  if (décalage == kPortDePage) page_ = mot & 7U;
  if (décalage >= kPortDePage) return;
  const std::size_t axe = décalage / 4U;
  const unsigned registre = 4 * page_ + décalage % 4U;
  if (registre == kInitialisation) axes_[axe].étape = mot == 1 ? kInitialisé : 0;
  if (registre == kCommandeEtat) Commande(axe, mot);
}

// A counter that was not started stands at 0.
void CarteIK121::Commande(std::size_t axe, std::uint16_t mot) {
  Axe& lAxe = axes_[axe];
  const std::int64_t position = Position(bornes.entréesAnalogiques[axe]);
  for (std::size_t i = 0; i < lAxe.latchs.size(); ++i) {
    if (mot != réglages_.demandeLatch[i]) continue;
    lAxe.latchs[i] = {.ancien = lAxe.latchs[i].compte,
                      .compte = lAxe.étape == kEnMarche ? position - lAxe.origine : 0,
                      .attente = regardsAvantPrêt};
    return;
  }
  if (lAxe.étape < kInitialisé || lAxe.étape == kEnMarche) return;
  const std::array<std::uint16_t, 3> suite{0x48, 0x1C, réglages_.départCompteur};
  lAxe.étape = mot == suite[lAxe.étape - kInitialisé] ? lAxe.étape + 1 : 0;
  if (lAxe.étape != kEnMarche) return;
  lAxe.origine = position;
  lAxe.latchs = {};
  ++départs[axe];
}

}  // namespace zuma::sim
