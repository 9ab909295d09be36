#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "sim/esclave_modbus.h"

namespace zuma::sim {

/// Modbus slaves on one line: each hears every question, and the one that is meant answers.
class BusModbus : public AppareilSérie {
 public:
  /// A line without slaves, on the virtual clock.
  using AppareilSérie::AppareilSérie;

  /// Puts a slave at that address.
  void Attache(std::uint8_t adresse, Ref<EsclaveModbus> esclave) {
    esclaves_.emplace_back(adresse, std::move(esclave));
  }
  /// The slave of that address; none when there is none.
  [[nodiscard]] EsclaveModbus* Esclave(std::uint8_t adresse) const;

  void Reçoit(std::string_view octets, LigneSérie& ligne) override;
  void Réveil(LigneSérie& ligne) override;
  void MetEnMarche() override;

 private:
  std::vector<std::pair<std::uint8_t, Ref<EsclaveModbus>>> esclaves_;
};

}  // namespace zuma::sim
