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
  services.horloge = horloge.Brut();
  services.fichiers = &fichiers;
}

void MachineSimulée::Branche(Chassis& chassis) {
  ports.Branche(chassis);
  for (const CarteRef& carte : *chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      const ENUM_TYPE_FONCTION type = bloc->TypeDeFonction();
      const bool logique = type == ENUM_TYPE_FONCTION::FctEntréesLogiques;
      if (!logique && type != ENUM_TYPE_FONCTION::FctEntréesAnalogiques) continue;
      for (const CanalRef& canal : *bloc->Canals()) {
        const auto borne = ports.BorneDe(*canal);
        if (borne) entrées_.push_back({*borne, logique, static_cast<double>(entrées_.size())});
      }
    }
  }
}

void MachineSimulée::Anime(Entrée& entrée, double secondes) {
  const double tour = secondes / kPériode + entrée.phase * 0.13;
  if (!entrée.logique) {
    entrée.borne.TensionEntrée(kMilieu + kAmplitude * std::sin(2 * std::numbers::pi * tour));
    return;
  }
  const auto rang = static_cast<std::uint64_t>(secondes / kClignotement + entrée.phase);
  entrée.borne.EntréeLogique(rang % 2 != 0);
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
  for (Entrée& entrée : entrées_) Anime(entrée, static_cast<double>(palier) * kPalier);
}

}  // namespace zuma::sim
