#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base_de_donnees.h"

/// The statements that the library asks of the configuration database, word for word: a database
/// made for this system must answer them, asymmetries included.
namespace zuma::requêtes {

/// Statements of one kind of object that a link table ties to a frame.
struct ObjetLié {
  /// Name of its table, which is also the column of the link tables.
  std::string_view table;
  std::string (*liste)(std::int32_t chassis);                        ///< objects of the frame
  std::string (*ligne)(std::int32_t index);                          ///< one object's row
  std::string (*liaison)(std::int32_t index, std::int32_t chassis);  ///< its link row, or null
};

///@{
/// Statements of the objects of each kind; boards and the watchdog have no link row.
extern const ObjetLié kCartes;
extern const ObjetLié kCapteurs;
extern const ObjetLié kCommandes;
extern const ObjetLié kEntréesLogiques;
extern const ObjetLié kSortiesLogiques;
extern const ObjetLié kWatchDog;
///@}

/// The frame's row, as the loader asks for it.
[[nodiscard]] std::string LigneDuChassis(std::int32_t chassis);
/// The same as `Chassis.Lien` asks for it.
[[nodiscard]] std::string LigneDuChassisPourLien(std::int32_t chassis);
/// A block's row.
[[nodiscard]] std::string LigneDeLaFonction(std::int32_t index);
/// A channel's row, as its block asks for it.
[[nodiscard]] std::string LigneDuCanalDeBloc(std::int32_t index);
/// Index and name of the blocks of a board.
[[nodiscard]] std::string FonctionsDe(std::int32_t carte);
/// Index and name of the channels of a block, in the order of their numbers.
[[nodiscard]] std::string CanauxDe(std::int32_t fonction);

///@{
/// Row accessors for service tools: the recordset of one row, or Nothing when there is no record.
/// `RecordSetSL` keeps its inconsistent statement: a database need not answer it.
[[nodiscard]] Ref<Recordset> RecordSetCanal(BaseDeDonnées& base, const Valeur& index);
[[nodiscard]] Ref<Recordset> RecordSetFonction(BaseDeDonnées& base, const Valeur& index);
[[nodiscard]] Ref<Recordset> RecordSetCarte(BaseDeDonnées& base, const Valeur& index);
[[nodiscard]] Ref<Recordset> RecordSetCapteur(BaseDeDonnées& base, const Valeur& index);
[[nodiscard]] Ref<Recordset> RecordSetSL(BaseDeDonnées& base, const Valeur& index);
///@}

}  // namespace zuma::requêtes
