#include "sim/machine_reseaux.h"

#include <cmath>
#include <numbers>

namespace zuma::sim {
namespace {

using enum ENUM_DRIVER;

constexpr double kPériode = 8;            // seconds
constexpr double kEntreDeux = 0.17;       // turns between the phases of two quantities
constexpr double kComptes = 16'000;       // of an LVDT probe, half its range
constexpr double kAmplitude = 10;         // at an input of an amplifier, in its own unit
constexpr std::int32_t kPortDuBloc = 90;  // of an amplifier read by a block
constexpr float kSansAmplificateur = 0;

}  // namespace

void MachineRéseaux::BrancheModule(const Canal& canal) {
  if (canal.NuméroDeSérie().empty()) return;
  ModuleOrbit& module = orbit_.Module(canal.NuméroDeSérie());
  grandeurs_.push_back([&module](double part) {
    module.compte = static_cast<std::int16_t>(std::lround(kComptes * part));
  });
}

// Only the channels that the frame reads have an amplifier.
void MachineRéseaux::BrancheVoie(std::int32_t port, std::int32_t canal) {
  if (canal < 0) return;
  ChaîneSpider& chaîne = spider_.Chaîne(port);
  const auto appareils =
      static_cast<std::size_t>(canal / BibliothèqueSpider::kCanauxParAppareil) + 1;
  if (chaîne.size() < appareils) {
    AppareilSpider vide;
    vide.fill({.type = kSansAmplificateur});
    chaîne.resize(appareils, vide);
  }
  spider_.Voie(port, canal).type = VoieSpider{}.type;
  grandeurs_.push_back(
      [this, port, canal](double part) { spider_.Voie(port, canal).grandeur = kAmplitude * part; });
}

void MachineRéseaux::Branche(Chassis& chassis) {
  for (const CarteRef& carte : *chassis.Cartes()) {
    const bool amplificateur = carte->Driver_enm() == DrvSpiderV1;
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      if (bloc->TypeDeFonction() != ENUM_TYPE_FONCTION::FctEntréesAnalogiques) continue;
      std::int32_t rang = 0;
      for (const CanalRef& canal : *bloc->Canals()) {
        if (canal->Driver() == DrvLvdtSolartron) BrancheModule(*canal);
        if (amplificateur) BrancheVoie(carte->Adresse(), canal->NuméroCanal());
        if (bloc->Driver_enm() == DrvSpider8) BrancheVoie(kPortDuBloc, rang++);
      }
    }
  }
}

void MachineRéseaux::Anime(double secondes) {
  double phase = 0;
  for (const Grandeur& grandeur : grandeurs_) {
    grandeur(std::sin(2 * std::numbers::pi * (secondes / kPériode + phase)));
    phase += kEntreDeux;
  }
}

}  // namespace zuma::sim
