#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/valeur.h"

/// Frames of the CBR tester: "UTEST", total length and function as big-endian words, data, and the
/// exclusive OR of all that precedes. Pure functions on the bytes, nothing here fails.
namespace zuma::trames_utest {

/// The requests of the machine, by index.
enum class Demande : std::uint8_t {
  Identification,  ///< answered by the kind of machine
  Départ2,         ///< third step of the start
  Arrêt,           ///< first step of the start, and the stop
  Départ7,         ///< second step of the start
  Fonction8,       ///< known to the machine, not used here
  Mesures,         ///< answered by force and displacement
};

/// Length of a request, which has no data.
inline constexpr std::size_t kLongueurDemande = 10;
/// One request as it goes out.
using Trame = std::array<char, kLongueurDemande>;
/// The request, with length, function and check sum.
[[nodiscard]] Trame ConstruitDemande(Demande demande) noexcept;

/// The answer that a state waits for: its function and its number of data bytes.
struct Attente {
  std::uint16_t fonction;  ///< code of the function
  std::size_t données;     ///< bytes between function and check sum
};
/// Kind of machine.
inline constexpr Attente kIdentification{.fonction = 1, .données = 2};
/// Force and displacement.
inline constexpr Attente kMesures{.fonction = 11, .données = 12};

/// What a look at the bytes received found.
enum class Code : std::uint8_t {
  Bonne,          ///< a good frame
  SansEntête,     ///< nothing begins a frame
  SommeFausse,    ///< wrong check sum
  AutreFonction,  ///< answer to another function
  Incomplète,     ///< more is to come
};

/// Judges what came in, after cutting off what stands before the first header. The frame goes from
/// there to the end of the buffer, so that anything behind it is a wrong check sum, a second whole
/// frame included. A frame without room for the data of its function, like the echo of a request,
/// is incomplete.
[[nodiscard]] Code Analyse(Octets& tampon, const Attente& attente);

/// Kinds of machine, by the first data byte of an identification.
enum class Machine : std::uint8_t { CBR, Marshall, UU };

/// Kind told by a good identification frame; none for a byte that names no kind.
[[nodiscard]] std::optional<Machine> DécodeIdentification(std::string_view trame) noexcept;

/// What a frame of measures tells.
struct Mesures {
  bool enMarche = false;   ///< the machine runs
  double force = 0;        ///< hundred-thousandths on the wire, signed
  double déplacement = 0;  ///< thousandths on the wire, never negative
};

/// Values of a good frame of measures.
[[nodiscard]] Mesures DécodeMesures(std::string_view trame) noexcept;

}  // namespace zuma::trames_utest
