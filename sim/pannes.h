#pragma once

#include <cstdint>

#include "core/valeur.h"

namespace zuma::sim {

/// What a line does to the traffic of its device, for trials of the library's resistance.
struct Pannes {
  bool débranchée = false;   ///< opening, reading and writing fail
  bool muette = false;       ///< nothing comes back
  bool parasitée = false;    ///< one bit of each chunk is turned over
  bool coupée = false;       ///< the last byte of each chunk is lost
  bool fausseSomme = false;  ///< the last byte of each chunk is wrong: no check sum holds
  bool brouillée = false;    ///< each byte is replaced by a random one
  bool babillarde = false;   ///< random bytes come on each read, asked or not
  bool tardive = false;      ///< each chunk comes `kRetard` seconds late
  bool figée = false;        ///< the first chunk comes again in the place of each one behind it
};
/// Longer than the time-outs of the buses, shorter than the patience of an operator.
inline constexpr double kRetard = 0.4;

/// Random bytes that are the same on every run.
class Hasard {
 public:
  explicit Hasard(std::uint32_t graine) : état_(graine != 0 ? graine : 1) {}
  [[nodiscard]] char Octet();

 private:
  std::uint32_t état_;
};

/// What is left of a chunk that came over a line with these faults.
void Abîme(const Pannes& pannes, Hasard& hasard, Octets& octets);

/// Kinds of faults that can be planned.
enum class GenreDePanne : std::uint8_t {
  Silence,
  Brouillage,
  FausseSomme,
  Coupure,
  Babillage,
  Débranchement,
  Retard,
  Figement,
};

/// Where a planned fault strikes.
enum class LieuDePanne : std::uint8_t {
  Partout,  ///< every serial line and the CAN card
  Port,     ///< one serial port
  CAN,
  USB,
};

/// A fault from `début` to `fin`, in seconds after the start.
struct PannePrévue {
  GenreDePanne genre = GenreDePanne::Silence;
  LieuDePanne lieu = LieuDePanne::Partout;
  std::int32_t port = 0;
  double début = 0;
  double fin = 0;

  [[nodiscard]] bool EstLà(double secondes) const noexcept {
    return secondes >= début && secondes < fin;
  }
};

/// Adds a fault of that kind to those of a line.
void Ajoute(GenreDePanne genre, Pannes& pannes);

}  // namespace zuma::sim
