#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/valeur.h"
#include "tree/enumerations.h"

namespace zuma {

class Canal;
class Carte;
class Fonction;

/// Base of a board's driver object: register access and the images of one board at one base
/// address. Owned by its `Carte`.
class Pilote {
 public:
  virtual ~Pilote() = default;
  /// The board may have lost what it was written: the next write goes out even when it should hold
  /// it already.
  virtual void OublieSesEcritures() {}
};

/// What a driver does for function blocks and channels. An operation left out does nothing.
struct OpérationsPilote {
  /// Finds or makes the driver object of the board at that base address.
  Pilote& (*ouvre)(Carte& carte, std::uint16_t base) = nullptr;
  void (*démarreBloc)(Fonction& bloc) = nullptr;
  void (*rafraîchitBloc)(Fonction& bloc) = nullptr;
  void (*démarreCanal)(Canal& canal) = nullptr;
  void (*rafraîchitCanal)(Canal& canal) = nullptr;
  /// Closes what the block's start opened: at discharge and again at the block's end.
  void (*fermeBloc)(Fonction& bloc) noexcept = nullptr;
  /// Closes at the block's end alone what a discharge leaves open.
  void (*termineBloc)(Fonction& bloc) noexcept = nullptr;
};

/// What a driver does for a whole board.
struct OpérationsCarte {
  void (*démarre)(Carte& carte) = nullptr;
  void (*rafraîchit)(Carte& carte) = nullptr;
};

/// How the refresh pass serves a board.
enum class ServiceCarte : std::uint8_t {
  ParFonction,     ///< block by block, at the rate of each block's type
  CarteEntière,    ///< `Carte.MetàJour` on every pass
  BusSimple,       ///< one exchange at a time, on every pass
  BusAvecSuivante  ///< the same, the next block taken from `FonctionSuivante`
};

/// What a refresh of a board may make its caller wait for. Boards are served in this order, so that
/// none that waits delays the outputs of those behind it.
enum class AttenteCarte : std::uint8_t {
  Aucune,   ///< registers, or an exchange that goes on over several passes
  Réponse,  ///< an answer, up to its time-out when the device is silent
  Pauses    ///< pauses that its device needs, up to a second
};

/// Block types that a driver serves, one bit each.
using TypesServis = std::uint8_t;
[[nodiscard]] constexpr TypesServis TypeServi(ENUM_TYPE_FONCTION type) noexcept {
  return static_cast<TypesServis>(1U << static_cast<unsigned>(type));
}

/// One driver: the only place that knows its number, its texts and its operations.
struct LigneDriver {
  ENUM_DRIVER valeur;
  std::string_view nom;            ///< name of the value
  std::string_view affichage;      ///< as shown in dumps; empty for none
  std::string_view texteCarte;     ///< column "Driver de la Carte"
  std::string_view texteFonction;  ///< column "Driver" of a block
  std::string_view texteCanal;     ///< column "Driver canal"
  TypesServis types = 0;
  ServiceCarte service = ServiceCarte::ParFonction;
  AttenteCarte attente = AttenteCarte::Aucune;
  /// Seconds from one reading to the next of a device that is well and not read by each refresh.
  double période = 0;
  const OpérationsPilote* pilote = nullptr;
  const OpérationsCarte* carte = nullptr;

  [[nodiscard]] bool Sert(ENUM_TYPE_FONCTION type) const noexcept {
    return (types & TypeServi(type)) != 0;
  }
};

/// The whole table, in the order of the values.
[[nodiscard]] std::span<const LigneDriver> TableDesDrivers() noexcept;

/// The row of a value; a value out of the table gives the row of `DrvAucun`.
[[nodiscard]] const LigneDriver& LigneDuDriver(ENUM_DRIVER valeur) noexcept;

/// Configuration texts, compared exactly. Null and an unknown text give `DrvAucun`.
[[nodiscard]] ENUM_DRIVER DriverDeCarte(const Valeur& texte) noexcept;
[[nodiscard]] ENUM_DRIVER DriverDeFonction(const Valeur& texte) noexcept;
[[nodiscard]] ENUM_DRIVER DriverDeCanal(const Valeur& texte) noexcept;

}  // namespace zuma
