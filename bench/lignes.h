#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/base_creation.h"

namespace zuma::banc {

inline constexpr std::int32_t kChassis = 1;

// Types of block.
inline constexpr std::string_view kEL = "Entrée Logique";
inline constexpr std::string_view kSL = "Sortie Logique";
inline constexpr std::string_view kEA = "Entrée Analogique";
inline constexpr std::string_view kSA = "Sortie Analogique";

/// Driver of the board with a hardware scan, which costs the least wait.
inline constexpr std::string_view kScan = "DrvACL8316_ACLD8125";

/// Rows of the database of one frame, added object by object. Every object bears its Index as
/// label and has no limit that it could pass.
class Lignes {
 public:
  /// Rates in hertz, 0 for never.
  Lignes(double fréquenceEA, double fréquenceEL);

  /// The next blocks hang on this board; its address is the next free one.
  void Carte(std::string_view driver = {});
  /// A block of the present board with channels 0 to `canaux` - 1, read or written by block where
  /// `parFonction`. Returns the Index of channel 0; the others follow.
  std::int32_t Bloc(std::string_view type, std::string_view driver, std::int32_t canaux,
                    bool parFonction);

  /// Each returns the new object's Index. `champs` replace or join those that all have.
  std::int32_t Capteur(std::string_view type, std::vector<Champ> champs = {});
  /// From a channel, filtered, through a table of 20 points.
  std::int32_t CapteurNormal(std::int32_t canal, std::vector<Champ> champs = {});
  std::int32_t Commande(std::string_view type, std::int32_t canal, std::vector<Champ> champs = {});
  std::int32_t EntréeLogique(std::int32_t canal, std::vector<Champ> champs = {});
  std::int32_t SortieLogique(std::int32_t canal, std::vector<Champ> champs = {});

  [[nodiscard]] const std::vector<linux_::LigneDeBase>& Toutes() const { return lignes_; }
  /// Objects of the frame, itself left out.
  [[nodiscard]] std::int32_t NombreDObjets() const { return index_; }

 private:
  std::int32_t Ajoute(std::string_view table, std::vector<Champ> champs, std::vector<Champ> encore);
  void Lie(std::string_view table, std::int32_t index);

  std::vector<linux_::LigneDeBase> lignes_;
  std::int32_t index_ = 0;  // one numbering for all tables
  std::int32_t carte_ = 0;
  std::int32_t adresse_ = 0x200;
};

/// One board of each family that reads something, eight channels each.
[[nodiscard]] Lignes HuitCartes(double fréquenceEA, double fréquenceEL);

[[nodiscard]] Champ Texte(std::string_view colonne, std::string_view texte);
[[nodiscard]] Champ Entier(std::string_view colonne, std::int32_t n);
[[nodiscard]] Champ Réel(std::string_view colonne, double x);
/// Column `rang` (from 1) of the children of a sensor.
[[nodiscard]] Champ Fils(int rang, std::int32_t capteur);

}  // namespace zuma::banc
