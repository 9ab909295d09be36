#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/linux/base_creation.h"
#include "platform/linux/champs.h"

namespace zuma::banc {

inline constexpr std::int32_t kChassis = 1;

// Types of block.
inline constexpr std::string_view kEL = "Entrée Logique";
inline constexpr std::string_view kSL = "Sortie Logique";
inline constexpr std::string_view kEA = "Entrée Analogique";
inline constexpr std::string_view kSA = "Sortie Analogique";

/// Driver of the board with a hardware scan, which costs the least wait.
inline constexpr std::string_view kScan = "DrvACL8316_ACLD8125";

/// Rows of the database of one frame, added object by object. Objects are numbered from 1 on
/// through all tables; each bears its Index as label and has no limit that it could pass.
class Lignes {
 public:
  /// Rates in hertz, 0 for never.
  Lignes(double fréquenceEA, double fréquenceEL);

  /// The next blocks hang on this board; its address is the next free one. `configuration` is its
  /// line, and `champs` replace or join its columns.
  void Carte(std::string_view driver = {}, std::string_view configuration = {},
             const std::vector<Champ>& champs = {});
  /// A block of the present board with channels 0 to `canaux` - 1, read or written by block where
  /// `parFonction`. Returns the Index of channel 0; the others follow. `champs` join its columns.
  std::int32_t Bloc(std::string_view type, std::string_view driver, std::int32_t canaux,
                    bool parFonction, const std::vector<Champ>& champs = {});
  /// One more channel of the block added last; -1 is the number of an error indicator. Returns its
  /// Index.
  std::int32_t Canal(std::int32_t numéro, const std::vector<Champ>& champs = {});
  /// The watchdog of the frame.
  void Watchdog(const std::vector<Champ>& champs);
  /// A sensor, a command or a logic input or output; returns its Index. `champs` replace or join
  /// those that all of the table have: sensors and commands a table of 20 points, sensors a filter.
  std::int32_t Objet(std::string_view table, const std::vector<Champ>& champs);

  [[nodiscard]] const std::vector<linux_::LigneDeBase>& Toutes() const { return lignes_; }
  /// Objects of the frame, itself left out.
  [[nodiscard]] std::int32_t NombreDObjets() const { return index_; }

 private:
  std::int32_t Ajoute(std::string_view table, std::vector<Champ> champs);
  void Lie(std::string_view table, std::int32_t index);

  std::vector<linux_::LigneDeBase> lignes_;
  std::int32_t index_ = 0;
  std::int32_t carte_ = 0;
  std::int32_t bloc_ = 0;
  std::int32_t adresse_ = 0x200;
};

/// One board of each family that reads something, eight channels each.
[[nodiscard]] Lignes HuitCartes(double fréquenceEA, double fréquenceEL);

using linux_::champs::Entier;
using linux_::champs::Réel;
using linux_::champs::Texte;

}  // namespace zuma::banc
