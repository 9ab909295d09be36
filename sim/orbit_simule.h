#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/orbit.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// A module of the LVDT network with its probe. It forgets its address when it loses its supply.
struct ModuleOrbit {
  std::string identité;       ///< by which it takes an address
  std::int16_t compte = 0;    ///< reading of the probe
  bool branché = true;        ///< on the network; see `OrbitSimulé::Débranche`
  std::int32_t adresse = 0;   ///< 0 is none
  int remisesAZéro = 0;       ///< since it last took an address or its supply
  double heureDeRemise = 0;   ///< of the last one, microseconds
  std::int32_t lectures = 0;  ///< answered
};

/// The LVDT network: modules that come and go. A module takes an address after two resets, half a
/// second behind the last one, and only while it has none.
class OrbitSimulé : public RéseauOrbit {
 public:
  /// A network without modules.
  explicit OrbitSimulé(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  /// The module of that identity, plugged on first use.
  ModuleOrbit& Module(std::string_view identité);
  /// Pulls a module: it loses its supply, hence its address.
  void Débranche(std::string_view identité);
  /// Plugs it back, without an address.
  void Rebranche(std::string_view identité);

  [[nodiscard]] std::int32_t ConnectToOrbitNetworks() override;
  void DisconnectFromOrbitNetworks() noexcept override;
  std::int32_t OrbitRst(std::int32_t réseau) override;
  [[nodiscard]] std::int32_t OrbitSetaddr(std::int32_t réseau, std::int32_t numéro,
                                          std::string_view identité) override;
  [[nodiscard]] std::int32_t OrbitRead1(std::int32_t réseau, std::int32_t numéro,
                                        std::int32_t& valeur) override;

  /// The library is connected to the network.
  [[nodiscard]] bool Connecté() const noexcept { return connecté_; }
  int connexions = 0;      ///< since the start
  int déconnexions = 0;    ///< since the start
  bool sansCarte = false;  ///< the interface itself is missing: no network at all

 private:
  HorlogeVirtuelle& horloge_;
  std::list<ModuleOrbit> modules_;  // references to modules are handed out
  bool connecté_ = false;
};

}  // namespace zuma::sim
