#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/valeur.h"

namespace zuma {

/// Commands of the laser extensometer. Those without an exchange in the table send nothing.
enum class EnumEIRCommande : std::int32_t {
  ReadEcho = 0,
  ReadZero = 1,
  ReadUnit = 2,
  ReadAnalogOut = 3,
  ReadTargetDistance = 4,
  ReadScansAverage = 5,
  ReadMeasuringType = 6,
  ReadLaserState = 7,
  ReadData = 8,
  ReadDataBinary = 9,
  ReadCounts = 10,
  ReadExternalScanReceiverState = 11,
  WriteEcho = 12,
  WriteZero = 13,
  WriteUnit = 14,
  WriteAnalogOut = 15,
  WriteTargetDistance = 16,
  WriteScansAverage = 17,
  WriteMeasuringType = 18,
  writeLaserState = 19,
  ActionNextSegment = 20,
};

}  // namespace zuma

/// The laser's protocol on bytes: what each command sends, when its reply is whole and right, and
/// what it tells.
namespace zuma::trames_laser {

/// What the replies have told so far.
struct EtatLu {
  bool LaserState = false;  ///< the laser is on
  bool EchoState = false;   ///< it repeats what it is sent
  bool ZeroState = false;   ///< its zero is set
  double ReadValue = 0;     ///< last measure, signed counts
};

/// One command that goes out, and its reply.
struct Echange {
  EnumEIRCommande commande;  ///< what is asked
  char lettre;               ///< what goes out for it
  bool avecValeur;           ///< the value follows the letter
  /// The reply is not whole yet, by its length.
  bool (*incomplète)(std::size_t longueur);
  /// A whole reply is right.
  bool (*valide)(const Echange& échange, std::string_view réponse);
  /// Takes what a right reply tells; `envoyée` is the value that the command carried.
  void (*prend)(std::string_view envoyée, Octets& réponse, EtatLu& état);
  /// The laser counts as free once the reply is whole, before that is judged; a wrong one then is
  /// an error all the same.
  bool prêtDAvance = false;
};

/// The exchange of a command; none for a command that sends nothing and for any other value.
[[nodiscard]] const Echange* EchangeDe(EnumEIRCommande commande) noexcept;

/// Bytes that an exchange sends.
[[nodiscard]] Octets Question(const Echange& échange, std::string_view valeur);

/// Counts of a measure of three bytes: 24 bits in two's complement, least significant byte first.
/// The greatest positive number is no measure and gives 0.
[[nodiscard]] double DécodeMesure(std::string_view octets);

}  // namespace zuma::trames_laser
