#include "sim/orbit_simule.h"

#include <algorithm>

namespace zuma::sim {
namespace {

constexpr std::int32_t kRéussi = 0;
constexpr std::int32_t kRefusé = 1;
constexpr int kRemisesNécessaires = 2;
constexpr double kRéveil = 500'000;  // microseconds between a reset and a new address

// What a module is after its supply came back.
void Réveille(ModuleOrbit& module) {
  module.adresse = 0;
  module.remisesAZéro = 0;
}

}  // namespace

ModuleOrbit& OrbitSimulé::Module(std::string_view identité) {
  const auto connu = std::ranges::find(modules_, identité, &ModuleOrbit::identité);
  if (connu != modules_.end()) return *connu;
  return modules_.emplace_back(ModuleOrbit{.identité = std::string(identité)});
}

void OrbitSimulé::Débranche(std::string_view identité) {
  ModuleOrbit& module = Module(identité);
  module.branché = false;
  Réveille(module);
}

void OrbitSimulé::Rebranche(std::string_view identité) {
  Module(identité).branché = true;
}

std::int32_t OrbitSimulé::ConnectToOrbitNetworks() {
  ++connexions;
  const auto présents = std::ranges::count(modules_, true, &ModuleOrbit::branché);
  connecté_ = !sansCarte && présents > 0;
  return connecté_ ? static_cast<std::int32_t>(présents) : 0;
}

void OrbitSimulé::DisconnectFromOrbitNetworks() noexcept {
  ++déconnexions;
  connecté_ = false;
}

std::int32_t OrbitSimulé::OrbitRst(std::int32_t réseau) {
  if (!connecté_ || réseau != 0) return kRefusé;
  for (ModuleOrbit& module : modules_) {
    if (!module.branché) continue;
    module.adresse = 0;
    ++module.remisesAZéro;
    module.heureDeRemise = horloge_.Maintenant();
  }
  return kRéussi;
}

std::int32_t OrbitSimulé::OrbitSetaddr(std::int32_t réseau, std::int32_t numéro,
                                       std::string_view identité) {
  if (!connecté_ || réseau != 0 || numéro < 1) return kRefusé;
  for (ModuleOrbit& module : modules_) {
    const bool prêt = module.branché && module.adresse == 0 &&
                      module.remisesAZéro >= kRemisesNécessaires &&
                      horloge_.Maintenant() >= module.heureDeRemise + kRéveil;
    if (!prêt || module.identité != identité) continue;
    module.adresse = numéro;
    module.remisesAZéro = 0;
    return kRéussi;
  }
  return kRefusé;
}

std::int32_t OrbitSimulé::OrbitRead1(std::int32_t réseau, std::int32_t numéro,
                                     std::int32_t& valeur) {
  if (!connecté_ || réseau != 0) return kEchecDeLecture;
  const auto module = std::ranges::find_if(
      modules_, [&](const ModuleOrbit& m) { return m.branché && m.adresse == numéro; });
  if (module == modules_.end()) return kEchecDeLecture;
  valeur = module->compte;
  ++module->lectures;
  return kRéussi;
}

}  // namespace zuma::sim
