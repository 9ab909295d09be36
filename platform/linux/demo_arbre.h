#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/linux/base_creation.h"
#include "platform/linux/demo_objets.h"

// Frames of the demonstration as tables: boards, blocks and channels.
namespace zuma::linux_ {

/// One board of a frame, as its row says it.
struct CarteDémo {
  std::int32_t index;                ///< of its row
  std::string_view nom;              ///< its name
  std::string_view adresse;          ///< hexadecimal
  std::string_view driver;           ///< for boards with a start of their own
  std::string_view configuration{};  ///< of the line of the board
};

namespace types_de_bloc {
inline constexpr std::string_view kEL = "Entrée Logique";     ///< logic inputs
inline constexpr std::string_view kSL = "Sortie Logique";     ///< logic outputs
inline constexpr std::string_view kEA = "Entrée Analogique";  ///< analog inputs
inline constexpr std::string_view kSA = "Sortie Analogique";  ///< analog outputs
}  // namespace types_de_bloc

/// A block without frequency output.
inline constexpr int kSansFréquence = -1;

/// One block of a board, with its channels.
struct BlocDémo {
  std::int32_t index;                   ///< the board is a tenth of it
  std::string_view type;                ///< one of `types_de_bloc`, its name too
  std::string_view driver;              ///< text of its driver; empty for that of the board
  bool parFonction;                     ///< read as a whole
  std::string_view canaux;              ///< names from the first channel on, between ';'
  int canalFréquence = kSansFréquence;  ///< channel that is a frequency output
  bool avecErreur = false;              ///< one more channel, the error indicator of a link
  std::int32_t premier = 0;             ///< number of the first channel
};

/// A column that only one row needs: text, or number when the text is empty.
struct ColonneDeLigne {
  std::string_view table;    ///< table of the row
  std::int32_t index;        ///< of the row
  std::string_view colonne;  ///< its name
  std::string_view texte;    ///< as the row holds it
  double nombre = 0;         ///< as the row holds it
};

/// One frame of the demonstration.
struct ChassisDémo {
  std::int32_t index;                        ///< of its row
  std::string_view nom;                      ///< its name
  std::span<const CarteDémo> cartes;         ///< boards
  std::span<const BlocDémo> blocs;           ///< blocks, of all boards
  std::span<const ColonneDeLigne> colonnes;  ///< what single rows have besides
  std::span<const CapteurDémo> capteurs;     ///< sensors
  std::span<const CommandeDémo> commandes;   ///< commands
};

/// Adds the rows of a frame. Block b of board c has the Index 10c + b, channel n of block f the
/// Index 100f + n, its error indicator 100f + 99.
void AjouteLeChassis(const ChassisDémo& chassis, std::vector<LigneDeBase>& lignes);

/// Adds the boards and blocks alone.
void AjouteLArbre(const ChassisDémo& chassis, std::vector<LigneDeBase>& lignes);

}  // namespace zuma::linux_
