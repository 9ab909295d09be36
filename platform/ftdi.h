#pragma once

#include <cstdint>
#include <string_view>

#include "base/valeur.h"

namespace zuma {

/// USB serial devices in the maker's direct mode. Every operation gives 0 when it went well and a
/// status of the library otherwise.
class FTD2XX {
 public:
  /// `FT_Purge`: what was received and not read.
  static constexpr std::int32_t kPurgeRéception = 1;
  /// `FT_Purge`: what was not sent yet.
  static constexpr std::int32_t kPurgeEmission = 2;

  virtual ~FTD2XX() = default;
  /// Opens device `numéro`, from 0.
  [[nodiscard]] virtual std::int32_t FT_Open(std::int32_t numéro, std::int32_t& poignée) = 0;
  /// Closes the device; nothing on a handle that is not open.
  virtual void FT_Close(std::int32_t poignée) noexcept = 0;
  /// Time-outs in milliseconds.
  [[nodiscard]] virtual std::int32_t FT_SetTimeouts(std::int32_t poignée, std::int32_t lecture,
                                                    std::int32_t écriture) = 0;
  /// Rate of the line, in bauds.
  [[nodiscard]] virtual std::int32_t FT_SetBaudRate(std::int32_t poignée, std::int32_t bauds) = 0;
  /// Drops what waits; `masque` is one of the two constants.
  [[nodiscard]] virtual std::int32_t FT_Purge(std::int32_t poignée, std::int32_t masque) = 0;
  /// Sends the bytes; a part that did not go is a failure.
  [[nodiscard]] virtual std::int32_t FT_Write(std::int32_t poignée, std::string_view octets) = 0;
  /// Bytes that wait in the receive and in the transmit queue.
  [[nodiscard]] virtual std::int32_t FT_GetStatus(std::int32_t poignée, std::int32_t& réception,
                                                  std::int32_t& émission) = 0;
  /// Takes at most `nombre` of the bytes that wait; less, down to none, is no failure.
  [[nodiscard]] virtual std::int32_t FT_Read(std::int32_t poignée, std::int32_t nombre,
                                             Octets& octets) = 0;
};

}  // namespace zuma
