#pragma once

#include <array>

#include "sim/esclave_modbus.h"

namespace zuma::sim {

/// Digital conditioner: a Modbus slave that gives three values in its holding registers.
class ConditionneurSimulé : public EsclaveModbus {
 public:
  /// What the module makes of a question.
  enum class Firmware : std::uint8_t {
    Trois,   ///< gives its three values whatever the number of registers asked
    Demandé  ///< gives what it is asked for
  };

  /// A module at an address of its line.
  using EsclaveModbus::EsclaveModbus;

  [[nodiscard]] Octets Traite(std::string_view question) override;

  /// The three quantities in raw units; more than 16 bits hold saturates.
  std::array<double, 3> valeurs{};
  Firmware firmware = Firmware::Trois;  ///< what it makes of a question
  /// Register of the first value.
  std::uint16_t premierRegistre = 1;
  /// Data bytes of every answer, for a module of another kind; 0 for what the firmware gives.
  std::uint8_t octetsForcés = 0;

 protected:
  [[nodiscard]] Octets LitRegistres(std::uint16_t premier, std::uint16_t nombre) const override;
};

}  // namespace zuma::sim
