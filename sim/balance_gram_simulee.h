#pragma once

#include <string>

#include "sim/balances_simulees.h"

namespace zuma::sim {

/// A balance that sends records of ten characters: sign, number filled with blanks, unit of two.
class BalanceGramSimulée : public BalanceSimulée {
 public:
  using BalanceSimulée::BalanceSimulée;
  std::string unité = " g";  ///< two characters

 protected:
  [[nodiscard]] Octets Trame() const override;
};

}  // namespace zuma::sim
