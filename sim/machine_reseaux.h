#pragma once

#include <functional>
#include <vector>

#include "core/chassis.h"
#include "sim/horloge_virtuelle.h"
#include "sim/orbit_simule.h"
#include "sim/spider_simule.h"

namespace zuma::sim {

/// The LVDT probes and measuring amplifiers of a frame as twins behind their libraries.
class MachineRéseaux {
 public:
  /// No twins yet.
  explicit MachineRéseaux(HorlogeVirtuelle& horloge) : orbit_(horloge), spider_(horloge) {}

  /// Plugs the module of every LVDT channel and the devices of every amplifier of a loaded frame,
  /// before it is started.
  void Branche(Chassis& chassis);
  /// Brings each quantity to where it is after `secondes`: slow sines, each with its own phase.
  void Anime(double secondes);
  /// The LVDT network.
  [[nodiscard]] OrbitSimulé& Orbit() noexcept { return orbit_; }
  /// The amplifiers.
  [[nodiscard]] SpiderSimulé& Spider() noexcept { return spider_; }

 private:
  using Grandeur = std::function<void(double)>;  ///< sets a quantity from -1 to 1 times its range
  void BrancheModule(const Canal& canal);
  void BrancheVoie(std::int32_t port, std::int32_t canal);

  OrbitSimulé orbit_;
  SpiderSimulé spider_;
  std::vector<Grandeur> grandeurs_;
};

}  // namespace zuma::sim
