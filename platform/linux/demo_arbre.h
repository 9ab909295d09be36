#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/linux/base_creation.h"
#include "platform/linux/demo_objets.h"

// Frames of the demonstration as tables: boards, blocks and channels.
namespace zuma::linux_ {

struct CarteDémo {
  std::int32_t index;
  std::string_view nom;
  std::string_view adresse;          // hexadecimal
  std::string_view driver;           // for boards with a start of their own
  std::string_view configuration{};  // of the board's line
};

namespace types_de_bloc {
inline constexpr std::string_view kEL = "Entrée Logique";
inline constexpr std::string_view kSL = "Sortie Logique";
inline constexpr std::string_view kEA = "Entrée Analogique";
inline constexpr std::string_view kSA = "Sortie Analogique";
}  // namespace types_de_bloc

inline constexpr int kSansFréquence = -1;

struct BlocDémo {
  std::int32_t index;
  std::string_view type;
  std::string_view driver;
  bool parFonction;
  std::string_view canaux;              // names from the first channel on, between ';'
  int canalFréquence = kSansFréquence;  // channel that is a frequency output
  bool avecErreur = false;              // one more channel, the error indicator of a link
  std::int32_t premier = 0;             // number of the first channel
};

// A column that only one row needs: text, or number when the text is empty.
struct ColonneDeLigne {
  std::string_view table;
  std::int32_t index;
  std::string_view colonne;
  std::string_view texte;
  double nombre = 0;
};

struct ChassisDémo {
  std::int32_t index;
  std::string_view nom;
  std::span<const CarteDémo> cartes;
  std::span<const BlocDémo> blocs;
  std::span<const ColonneDeLigne> colonnes;
  std::span<const CapteurDémo> capteurs;
  std::span<const CommandeDémo> commandes;
};

/// Adds the rows of a frame. Block b of board c has the Index 10c + b, channel n of block f the
/// Index 100f + n, its error indicator 100f + 99.
void AjouteLeChassis(const ChassisDémo& chassis, std::vector<LigneDeBase>& lignes);

/// Adds the boards and blocks alone.
void AjouteLArbre(const ChassisDémo& chassis, std::vector<LigneDeBase>& lignes);

}  // namespace zuma::linux_
