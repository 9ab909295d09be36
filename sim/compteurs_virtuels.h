#pragma once

#include <map>
#include <string>
#include <string_view>

#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// Fine counters on the virtual clock.
class CompteursVirtuels : public CompteursFins {
 public:
  explicit CompteursVirtuels(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  [[nodiscard]] std::int16_t Ouvre(std::string_view) override {
    ouverts_[++dernier_] = horloge_.Maintenant();
    return dernier_;
  }
  [[nodiscard]] std::int32_t Lit(std::int16_t poignée) override {
    return static_cast<std::int32_t>(horloge_.LitMicrosecondes() - ouverts_.at(poignée));
  }
  void Ferme(std::int16_t poignée) noexcept override { ouverts_.erase(poignée); }
  [[nodiscard]] std::size_t Ouverts() const noexcept { return ouverts_.size(); }

 private:
  HorlogeVirtuelle& horloge_;
  std::map<std::int16_t, double> ouverts_;
  std::int16_t dernier_ = 0;
};

}  // namespace zuma::sim
