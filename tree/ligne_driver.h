#pragma once

/// @file
/// One row of the table of drivers, and what a library of drivers holds out.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tree/enumerations.h"

namespace zuma {

class Canal;
class Carte;
class FenêtreHôte;
class Fonction;
struct JumeauDeDriver;
struct Réglages;

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
  /// Starts a block: opens its link, puts its outputs at rest.
  void (*démarreBloc)(Fonction& bloc) = nullptr;
  /// Exchanges a block as a whole.
  void (*rafraîchitBloc)(Fonction& bloc) = nullptr;
  /// Starts one channel.
  void (*démarreCanal)(Canal& canal) = nullptr;
  /// Exchanges one channel.
  void (*rafraîchitCanal)(Canal& canal) = nullptr;
  /// Closes what the block's start opened: at discharge and again at the block's end.
  void (*fermeBloc)(Fonction& bloc) noexcept = nullptr;
  /// Closes at the block's end alone what a discharge leaves open.
  void (*termineBloc)(Fonction& bloc) noexcept = nullptr;
};

/// What a driver does for a whole board.
struct OpérationsCarte {
  /// Starts a board, before its blocks.
  void (*démarre)(Carte& carte) = nullptr;
  /// Exchanges a board as a whole.
  void (*rafraîchit)(Carte& carte) = nullptr;
  /// Shows the maintenance form of the instrument as a child of `mère`; none when left out.
  void (*entretient)(Carte& carte, FenêtreHôte& mère) = nullptr;
  /// `Carte.Lien` ties the board to the shared parameter that its column "Config EIR" names.
  bool lieUnParamètre = false;
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
/// The bit of a block type; none for a number that is no type, which a host may set.
[[nodiscard]] constexpr TypesServis TypeServi(ENUM_TYPE_FONCTION type) noexcept {
  constexpr unsigned kBits = 8;
  const auto rang = static_cast<unsigned>(type);
  return rang < kBits ? static_cast<TypesServis>(1U << rang) : TypesServis{0};
}

/// What one device of a driver may hold a pass up for when it does not answer or is started: one
/// for each board, or one for each channel.
struct RetenueDeDriver {
  bool parCanal = false;  ///< of each channel, else of the board
  /// Longest wait in seconds; none when left out.
  double (*secondes)(const Réglages& réglages) = nullptr;
};

/// Form of a row and of what it points at. It changes with each change that a driver built apart
/// would not survive.
inline constexpr std::uint32_t kVersionDesDrivers = 2;

/// One driver: the only place that knows its number, its texts and its operations. A row and what
/// it points at outlive every frame that they serve.
struct LigneDriver {
  std::uint32_t version = kVersionDesDrivers;  ///< form of the row that its maker knew
  ENUM_DRIVER valeur = ENUM_DRIVER::DrvAucun;  ///< number of the driver
  std::string_view nom{};                      ///< name of the value
  std::string_view affichage{};                ///< as shown in dumps; empty for none
  std::string_view texteCarte{};               ///< column "Driver de la Carte"
  std::string_view texteFonction{};            ///< column "Driver" of a block
  std::string_view texteCanal{};               ///< column "Driver canal"
  /// Block types that it serves; 0 for a board alone.
  TypesServis types = 0;
  /// How the pass serves a board of this driver.
  ServiceCarte service = ServiceCarte::ParFonction;
  /// What a refresh of such a board may wait for.
  AttenteCarte attente = AttenteCarte::Aucune;
  /// Seconds from one reading to the next of a device that is well and not read by each refresh.
  double période = 0;
  /// How long a silent device holds a pass.
  RetenueDeDriver retenue{};
  /// A block uses the serial line of its board when it was given none of its own.
  bool surLaLigneDeLaCarte = false;
  /// A block of logic outputs keeps exactly its "Nombre de Canaux" of channels.
  bool élagueLesSorties = false;
  /// A line that is read reaches the channels 0 to this number less one; 0 sets no limit.
  std::int16_t lignesLues = 0;
  /// True on output 0 starts a machine: a stop must not leave that level.
  bool sortieQuiDémarre = false;
  /// What an integrator should know about the wires of such a block; empty for nothing.
  std::string_view câblage{};
  /// What it does for blocks and channels; none when null.
  const OpérationsPilote* pilote = nullptr;
  /// What it does for a board; none when null.
  const OpérationsCarte* carte = nullptr;
  /// Twin of a port-mapped board that the simulated machine does not know
  /// (`tree/jumeau_de_driver.h`); none: it has one for the library's own, and nothing for others.
  const JumeauDeDriver* jumeau = nullptr;

  /// No pass refreshes such a board: its host does, whenever it wants a reading.
  [[nodiscard]] bool EstLaisséeALHôte() const noexcept {
    return service == ServiceCarte::ParFonction && carte != nullptr && carte->rafraîchit != nullptr;
  }
  /// True when blocks of that type may name the driver.
  [[nodiscard]] bool Sert(ENUM_TYPE_FONCTION type) const noexcept {
    return (types & TypeServi(type)) != 0;
  }
};

/// The row of no driver: it serves nothing.
inline constexpr LigneDriver kSansDriver{.nom = "DrvAucun"};

/// What a library of drivers holds out to the program that loads it.
struct DriversDUneBibliothèque {
  std::uint32_t version = kVersionDesDrivers;  ///< read first: rows of another form are not touched
  const LigneDriver* lignes = nullptr;         ///< its rows
  std::size_t nombre = 0;                      ///< how many there are
};

}  // namespace zuma

/// The one symbol that such a library defines, and that `zuma --driver LIBRARY` looks for. The
/// library is built without those of zuma and takes their symbols from the program, so that there
/// is one copy of everything; it stays loaded until the process ends. Values from 10 000 on are
/// free for drivers of others.
extern "C" __attribute__((visibility("default"))) const zuma::DriversDUneBibliothèque zuma_drivers;
