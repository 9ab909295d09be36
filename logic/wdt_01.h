#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/objet.h"
#include "platform/collaborateurs.h"
#include "platform/services.h"

/// Watchdog board WDT 01. It has two ports, data at its base address and status just above, and
/// takes lines of text ended by a carriage return: "S" arms and refreshes, "E" stops, "T=" sets
/// the time in seconds.
namespace zuma::wdt_01 {

/// Ends each line of text.
inline constexpr std::uint8_t kRetourChariot = 13;

/// How the board is reached. `objet` speaks for it when it does not answer.
struct Liaison {
  PortsES& ports;      ///< I/O ports of the machine
  ZED_Timer& timer;    ///< times the wait for the board
  const Objet& objet;  ///< in whose name it is told
  std::uint16_t base;  ///< data port; the status port is one above
};

/// Status port. Bit 7: the board is ready for a byte.
struct Etat {
  ///@{
  /// As it stands on the port; told in the dump alone.
  bool bit0;
  bool bit1;
  bool bit2;
  ///@}
  bool prête;  ///< ready for a byte
};

/// Reads the status port; never waits.
[[nodiscard]] Etat WDT_LitEtat(const Liaison& liaison);

/// Waits until the board is ready, then writes the byte. After one second each further poll shows
/// "TimeOut Watch dog" and the wait goes on until the board answers, or fails once the message box
/// gives it up. False when that was shown.
bool WDT_EcritOctet(const Liaison& liaison, std::uint8_t octet);
/// Writes a line, up to its first carriage return, which is added.
void WDT_EcritLigne(const Liaison& liaison, std::string_view ligne);
/// Stops the board: it does not trip any more. Waits like `WDT_EcritOctet`.
void WDT_Stoppe(const Liaison& liaison);
/// Arms or refreshes the board. Waits like `WDT_EcritOctet`.
void WDT_Arme(const Liaison& liaison);
/// Stops the board and gives it its time, in seconds.
void WDT_ChargeTemps(const Liaison& liaison, float secondes);

/// The line that gives the board a time: "T=" and the seconds with a decimal point and no sign.
[[nodiscard]] std::string LigneDuTemps(float secondes);

}  // namespace zuma::wdt_01
