#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// Fine counters on the virtual clock.
class CompteursVirtuels : public CompteursFins {
 public:
  /// Counts on that clock.
  explicit CompteursVirtuels(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  [[nodiscard]] std::int16_t Ouvre(std::string_view) override {
    auto libre = std::find(départs_.begin(), départs_.end(), std::nullopt);
    if (libre == départs_.end()) libre = départs_.insert(libre, std::nullopt);
    *libre = horloge_.Maintenant();
    return static_cast<std::int16_t>(libre - départs_.begin());
  }
  [[nodiscard]] std::int32_t Lit(std::int16_t poignée) override {
    const std::optional<double>& départ = départs_.at(static_cast<std::size_t>(poignée));
    if (!départ) return 0;  // closed
    return static_cast<std::int32_t>(horloge_.LitMicrosecondes() - *départ);
  }
  void Ferme(std::int16_t poignée) noexcept override {
    const auto rang = static_cast<std::size_t>(poignée);
    if (rang < départs_.size()) départs_[rang].reset();
  }
  /// Counters that are open.
  [[nodiscard]] std::size_t Ouverts() const noexcept {
    return départs_.size() -
           static_cast<std::size_t>(std::count(départs_.begin(), départs_.end(), std::nullopt));
  }

 private:
  HorlogeVirtuelle& horloge_;
  // By handle; a closed one is given again, so that a pass that opens it anew does not allocate.
  std::vector<std::optional<double>> départs_;
};

}  // namespace zuma::sim
