#include "sim/machine_simulee.h"

#include <cmath>
#include <numbers>

namespace zuma::sim {
namespace {

constexpr double kMilieu = 5;          // volts
constexpr double kAmplitude = 4;       // volts: 1 to 9 V suits unipolar boards too
constexpr double kPériode = 8;         // seconds
constexpr double kClignotement = 1.5;  // seconds
// The terminals move in steps, so that a view shows values and terminals of the same instant.
constexpr double kPalier = 0.1;  // seconds

}  // namespace

MachineSimulée::MachineSimulée(BoîteDeMessage& messages) {
  services.messages = &messages;
  services.ports = &ports.Bus();
  services.compteurs = &compteurs;
  services.liaisons = &liaisons;
  services.can = &bus.Can();
  services.horloge = horloge.Brut();
  services.fichiers = &fichiers;
}

void MachineSimulée::Branche(Chassis& chassis) {
  ports.Branche(chassis);
  bus.Branche(chassis);
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      const ENUM_TYPE_FONCTION type = bloc->TypeDeFonction();
      const bool logique = type == ENUM_TYPE_FONCTION::FctEntréesLogiques;
      if (!logique && type != ENUM_TYPE_FONCTION::FctEntréesAnalogiques) continue;
      for (const CanalRef& canal : *bloc->Canals()) {
        Bornes* bornes = ports.BornesDe(*canal);
        if (bornes == nullptr || canal->NuméroCanal() < 0 || canal->NuméroCanal() > 31) continue;
        entrées_.push_back(
            {bornes, canal->NuméroCanal(), logique, static_cast<double>(entrées_.size())});
      }
    }
  }
}

void MachineSimulée::Anime(const Entrée& entrée, double secondes) {
  const double tour = secondes / kPériode + entrée.phase * 0.13;
  if (!entrée.logique) {
    entrée.bornes->entréesAnalogiques[static_cast<std::size_t>(entrée.numéro)] =
        kMilieu + kAmplitude * std::sin(2 * std::numbers::pi * tour);
    return;
  }
  const auto rang = static_cast<std::uint64_t>(secondes / kClignotement + entrée.phase);
  const std::uint32_t masque = 1U << static_cast<unsigned>(entrée.numéro);
  std::uint32_t& lignes = entrée.bornes->entréesLogiques;
  lignes = rang % 2 == 0 ? lignes & ~masque : lignes | masque;
}

void MachineSimulée::AvanceJusquA(double secondes) {
  // The start of the boards took its own time.
  if (passe_ == 0) origine_ = horloge->Maintenant();
  const double retard = origine_ + secondes * 1e6 - horloge->Maintenant();
  if (retard > 0) horloge->Avance(retard);
  ports.Bus().Passe(++passe_);
  const auto palier = static_cast<std::int64_t>(secondes / kPalier + 0.5);
  if (palier == palier_) return;
  palier_ = palier;
  bus.Anime(static_cast<double>(palier) * kPalier);
  for (const Entrée& entrée : entrées_) Anime(entrée, static_cast<double>(palier) * kPalier);
}

}  // namespace zuma::sim
