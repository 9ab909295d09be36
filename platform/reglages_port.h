#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zuma {

/// Line settings of an open serial port, in the codes of the object model.
struct RéglagesPort {
  std::int32_t vitesse = 9600;  ///< bits per second; any rate the hardware takes
  std::int32_t parité = 0;      ///< 0 none, 1 odd, 2 even, 3 mark, 4 space
  std::int32_t bits = 8;        ///< 5 to 8; 4 is refused by the system
  std::int32_t stop = 1;        ///< 1, 15 (one and a half) or 2

  /// Equal in all four.
  friend bool operator==(const RéglagesPort&, const RéglagesPort&) = default;
};

/// Settings text of an instrument: a port (number, "COM" and a number, or a device's name), then
/// rate, parity letter, data bits and stop bits, separated by commas. The port may be left out.
struct RéglagesInstrument {
  std::string port;      ///< number, "COM" and a number, or device
  RéglagesPort ligne;    ///< rate, parity, bits
  bool valides = false;  ///< false when the text was not understood

  /// Number of a port given as "3" or "COM3"; 0 for a device's name.
  [[nodiscard]] std::int32_t NuméroPort() const noexcept;
};
/// Reads a settings text. What is not understood gives settings that are not `valides`.
[[nodiscard]] RéglagesInstrument LitRéglages(std::string_view texte);

///@{
/// Letter of a parity code ("N", "O", "E", "M", "S") and text of a stop code ("1", "1.5", "2").
[[nodiscard]] std::string LettreParité(std::int32_t code);
[[nodiscard]] std::string TexteStop(std::int32_t code);
///@}

}  // namespace zuma
