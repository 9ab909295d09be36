#pragma once

#include <cstdint>
#include <string_view>

namespace zuma {

/// Library of the LVDT network: modules on a bus, each with an identity and an address that it is
/// given at start.
class RéseauOrbit {
 public:
  /// Result of a read that failed.
  static constexpr std::int32_t kEchecDeLecture = 255;

  virtual ~RéseauOrbit() = default;
  /// Opens the networks and gives the number of modules found; 0 when there is none.
  [[nodiscard]] virtual std::int32_t ConnectToOrbitNetworks() = 0;
  /// Leaves the networks; nothing when there was no connection.
  virtual void DisconnectFromOrbitNetworks() noexcept = 0;
  /// Takes their addresses from the modules of a network.
  virtual std::int32_t OrbitRst(std::int32_t réseau) = 0;
  /// Gives address `numéro`, from 1, to the module of that identity; 0 when it took it.
  [[nodiscard]] virtual std::int32_t OrbitSetaddr(std::int32_t réseau, std::int32_t numéro,
                                                  std::string_view identité) = 0;
  /// Reading of a module, a signed count of 16 bits; `kEchecDeLecture` when it does not answer.
  [[nodiscard]] virtual std::int32_t OrbitRead1(std::int32_t réseau, std::int32_t numéro,
                                                std::int32_t& valeur) = 0;
};

}  // namespace zuma
