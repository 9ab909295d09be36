#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "base/valeur.h"

namespace zuma::sim {

/// What a line does to the traffic of its device, for trials of the library's resistance.
struct Pannes {
  bool débranchée = false;   ///< opening, reading and writing fail
  bool muette = false;       ///< answers are lost on their way, questions are not
  bool sourde = false;       ///< questions are lost on their way: the device never hears
  bool parasitée = false;    ///< one bit of each chunk is turned over
  bool coupée = false;       ///< the last byte of each chunk is lost
  bool fausseSomme = false;  ///< the last byte of each chunk is wrong: no check sum holds
  bool brouillée = false;    ///< each byte is replaced by a random one
  bool babillarde = false;   ///< random bytes come one behind the other, and drown all others
  bool tardive = false;      ///< each chunk comes `kRetard` seconds late
  bool figée = false;        ///< the first chunk comes again in the place of each one behind it
  // Now and then in a question or a chunk, wherever in it.
  bool perdante = false;     ///< one byte is lost
  bool ajoutante = false;    ///< one random byte is added
  bool retournante = false;  ///< one bit of one byte is turned over
};

/// The faults of now and then strike once in that many chunks.
inline constexpr std::size_t kUneFoisSur = 4;
/// Longer than the time-outs of the buses, shorter than the patience of an operator.
inline constexpr double kRetard = 0.4;

/// Random bytes that are the same on every run.
class Hasard {
 public:
  /// The same seed gives the same bytes.
  explicit Hasard(std::uint32_t graine) : état_(graine != 0 ? graine : 1) {}
  /// The luck of one line or board of a machine: with seed 0 that of its number alone.
  [[nodiscard]] static Hasard De(std::uint32_t graine, std::uint32_t numéro) {
    return Hasard(numéro * 2'654'435'761U ^ graine * 2'246'822'519U);
  }
  /// A random byte.
  [[nodiscard]] char Octet();
  /// A random word.
  [[nodiscard]] std::uint32_t Mot();
  /// A number below `borne`, which is not 0.
  [[nodiscard]] std::size_t Sous(std::size_t borne);

 private:
  std::uint32_t état_;
};

/// What is left of a chunk that a device sends over a line with these faults.
void Abîme(const Pannes& pannes, Hasard& hasard, Octets& octets);
/// The same for those faults that strike one byte now and then, in both directions of a line.
void AbîmeUnOctet(const Pannes& pannes, Hasard& hasard, Octets& octets);

/// What ails a board, and the luck of its contacts.
struct PannesDeCarte {
  bool rebondit = false;  ///< any look at its logic inputs finds any state
  bool bloquée = false;   ///< what it is waited for never comes
  bool morte = false;     ///< pulled: all ones are read, writes are lost, its terminals stand
  Hasard hasard{1};       ///< draws the states of contacts

  /// Logic lines as one look finds them.
  [[nodiscard]] std::uint32_t Vues(std::uint32_t lignes) {
    return rebondit ? lignes ^ hasard.Mot() : lignes;
  }
};

/// Kinds of faults that can be planned.
enum class GenreDePanne : std::uint8_t {
  Silence,        ///< `Pannes::muette`
  Brouillage,     ///< `Pannes::brouillée`
  FausseSomme,    ///< `Pannes::fausseSomme`
  Coupure,        ///< `Pannes::coupée`
  Babillage,      ///< `Pannes::babillarde`
  Débranchement,  ///< `Pannes::débranchée`
  Retard,         ///< `Pannes::tardive`
  Figement,       ///< `Pannes::figée`
  Surdité,        ///< `Pannes::sourde`
  Perte,          ///< `Pannes::perdante`
  Ajout,          ///< `Pannes::ajoutante`
  Retournement,   ///< `Pannes::retournante`
  Rebond,         ///< of the boards: any look at their logic inputs finds any state
  Blocage,        ///< of the boards: what they are waited for never comes
  Mort,           ///< of the boards: all ones are read, writes are lost, outputs stand
  Horloge,        ///< the clock of the day is wrong
  EnMarche,       ///< a machine runs already when the program starts
};

/// Where a planned fault strikes.
enum class LieuDePanne : std::uint8_t {
  Partout,  ///< every serial line and the CAN card; every board, for what only boards have
  Port,     ///< one serial port
  CAN,      ///< the CAN card
  USB,      ///< the USB drive
  Cartes,   ///< every port-mapped and PCI board
  Carte,    ///< the port-mapped board of one base address
};

/// An instant before the first pass: faults without a beginning strike in the start already.
inline constexpr double kAvantLeDépart = -1;

/// A fault from `début` to `fin`, in seconds after the first pass.
struct PannePrévue {
  GenreDePanne genre = GenreDePanne::Silence;  ///< what happens
  LieuDePanne lieu = LieuDePanne::Partout;     ///< where it strikes
  std::int32_t port = 0;                       ///< of a line, or base address of a board
  double quantité = 0;  ///< seconds that the clock of the day is put forward; negative for back
  double début = 0;     ///< first instant
  double fin = 0;       ///< instant behind the last one

  /// It strikes at that instant.
  [[nodiscard]] bool EstLà(double secondes) const noexcept {
    return secondes >= début && secondes < fin;
  }
  /// It strikes that serial port.
  [[nodiscard]] bool FrappeLaLigne(std::int32_t numéro) const noexcept {
    return lieu == LieuDePanne::Partout || (lieu == LieuDePanne::Port && port == numéro);
  }
  /// It strikes all boards.
  [[nodiscard]] bool FrappeLesCartes() const noexcept;
  /// It strikes the port-mapped board at that base address.
  [[nodiscard]] bool FrappeLaCarte(std::int32_t base) const noexcept {
    return FrappeLesCartes() || (lieu == LieuDePanne::Carte && port == base);
  }
};

/// Whether a fault of that kind is there at that instant, among those that strike by `où`.
template <class Où>
[[nodiscard]] bool Frappe(std::span<const PannePrévue> pannes, double secondes, GenreDePanne genre,
                          Où&& où) {
  return std::ranges::any_of(pannes, [&](const PannePrévue& panne) {
    return panne.genre == genre && panne.EstLà(secondes) && où(panne);
  });
}

/// Puts the faults of that instant, and no other, on a board; `frappe` tells which planned ones
/// strike it.
template <class Où>
void Applique(std::span<const PannePrévue> pannes, double secondes, Où&& frappe,
              PannesDeCarte& carte) {
  carte.rebondit = Frappe(pannes, secondes, GenreDePanne::Rebond, frappe);
  carte.bloquée = Frappe(pannes, secondes, GenreDePanne::Blocage, frappe);
  carte.morte = Frappe(pannes, secondes, GenreDePanne::Mort, frappe);
}

/// Draws faults of all kinds that come and go, one behind the other, at the place and within the
/// time of `cadre`: 0.1 to 3 s each, 0.5 to 4 s between two. At most an hour of them.
[[nodiscard]] std::vector<PannePrévue> TireLesPannes(const PannePrévue& cadre,
                                                     std::uint32_t graine);

/// Adds a fault of that kind to those of a line.
void Ajoute(GenreDePanne genre, Pannes& pannes);

}  // namespace zuma::sim
