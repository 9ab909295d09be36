#pragma once

#include <cstdint>

namespace zuma {

/// Library of the PCI measuring boards. A call gives 0 when it went well and a negative code
/// otherwise; `carte` is the handle that `Register_Card` gave.
class BibliothèquePCI {
 public:
  /// Type of the analog output board for `Register_Card`.
  static constexpr std::uint16_t kType6208V = 1;
  /// Type of the multifunction board for `Register_Card`.
  static constexpr std::uint16_t kType9111 = 0x15;

  virtual ~BibliothèquePCI() = default;
  /// Handle of board `numéro` of that type, counted from 0; negative when there is none.
  [[nodiscard]] virtual std::int16_t Register_Card(std::uint16_t type, std::uint16_t numéro) = 0;
  /// Trigger source, trigger mode and trace count of the analog inputs.
  virtual std::int16_t AI_9111_Config(std::uint16_t carte, std::uint16_t source, std::uint16_t mode,
                                      std::uint16_t trace) = 0;
  /// One conversion: `gain` is the range code from 1 (10 V) on, each code halves the range; the
  /// signed reading comes as 16 bits.
  virtual std::int16_t AI_ReadChannel(std::uint16_t carte, std::uint16_t canal, std::uint16_t gain,
                                      std::uint16_t& valeur) = 0;
  /// Range of the analog output: 0 from 0 to 10 V, 1 from -10 to 10 V.
  virtual std::int16_t AO_9111_Config(std::uint16_t carte, std::uint16_t polarité) = 0;
  /// Sets an output to a signed code, which its range turns into volts.
  virtual std::int16_t AO_WriteChannel(std::uint16_t carte, std::uint16_t canal,
                                       std::int16_t valeur) = 0;
  /// Lines of a port, one a bit, set when active.
  virtual std::int16_t DI_ReadPort(std::uint16_t carte, std::uint16_t port, std::uint32_t& mot) = 0;
  /// One line of a port; 1 is active.
  virtual std::int16_t DI_ReadLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                                   std::uint16_t& état) = 0;
  /// Sets all lines of a port, one a bit.
  virtual std::int16_t DO_WritePort(std::uint16_t carte, std::uint16_t port, std::uint32_t mot) = 0;
  /// Sets one line of a port; 1 is active.
  virtual std::int16_t DO_WriteLine(std::uint16_t carte, std::uint16_t port, std::uint16_t ligne,
                                    std::uint16_t état) = 0;
};

}  // namespace zuma
