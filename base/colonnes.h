#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/echec.h"
#include "base/outils_communs.h"
#include "platform/base_de_donnees.h"

/// Reads of the columns of a row. A failure names the column: a missing one is 3265, Null 94, text
/// that is no number 94 or 13, a number out of range 6.
namespace zuma::colonnes {

/// Runs `travail`; a failure is told with the column that it comes from.
template <class Travail>
auto EnNommant(std::string_view colonne, Travail&& travail) {
  try {
    return travail();
  } catch (const Echec& échec) {
    throw échec.Précisé(" : colonne '" + std::string(colonne) + "'");
  }
}

/// Columns that a row must have.
[[nodiscard]] std::string Texte(const Recordset& ligne, std::string_view colonne);
/// Numbers are also read from texts, with comma or point.
[[nodiscard]] double Nombre(const Recordset& ligne, std::string_view colonne);

///@{
/// The same of a value already found in column `colonne`.
[[nodiscard]] std::string Texte(const Valeur& valeur, std::string_view colonne);
[[nodiscard]] double Nombre(const Valeur& valeur, std::string_view colonne);
[[nodiscard]] std::int32_t Entier32(const Valeur& valeur, std::string_view colonne);
///@}

/// One row of a class's table of columns: a name, and what an object makes of the value.
template <class Objet>
struct Colonne {
  /// Name of the column.
  std::string_view nom;
  /// Takes the value into the object; throws `Echec` on one that it refuses.
  void (*lit)(Objet&, const Valeur&);

  /// Reads the value into `objet`; a failure names the column.
  void Lit(Objet& objet, const Valeur& valeur) const {
    EnNommant(nom, [&] { lit(objet, valeur); });
  }
};

namespace détail {
template <class>
struct Objet;
template <class T, class C>
struct Objet<T C::*> {
  using Type = C;
};
template <class C>
struct Objet<void (*)(C&, const Valeur&)> {
  using Type = C;
};
}  // namespace détail

/// Class of a field, or of what a reader reads into.
template <auto kQuoi>
using ObjetDe = typename détail::Objet<decltype(kQuoi)>::Type;

///@{
/// Readers for tables of columns: a value into a field. Texts and booleans as `VersTexte` and
/// `VersBooléen` read them; numbers are also read from texts, and fail with 94 on Null, empty or
/// unreadable text, with 6 out of range.
template <auto kChamp>
void LitTexte(ObjetDe<kChamp>& objet, const Valeur& v) {
  objet.*kChamp = VersTexte(v);
}
template <auto kChamp>
void LitBooléen(ObjetDe<kChamp>& objet, const Valeur& v) {
  objet.*kChamp = VersBooléen(v);
}
template <auto kChamp>
void LitNombre(ObjetDe<kChamp>& objet, const Valeur& v) {
  objet.*kChamp = VersDouble(OutilsCommuns::LitChampSûr(v));
}
template <auto kChamp>
void LitEntier16(ObjetDe<kChamp>& objet, const Valeur& v) {
  objet.*kChamp = VersEntier16(OutilsCommuns::LitChampSûr(v));
}
template <auto kChamp>
void LitEntier32(ObjetDe<kChamp>& objet, const Valeur& v) {
  objet.*kChamp = VersEntier32(OutilsCommuns::LitChampSûr(v));
}
///@}
/// Hexadecimal digits, as those of an address.
template <auto kChamp>
void LitHexa(ObjetDe<kChamp>& objet, const Valeur& v) {
  objet.*kChamp = OutilsCommuns::HexaVersLong(v);
}
/// Another reader, of anything but Null.
template <auto kLit>
void SaufNul(ObjetDe<kLit>& objet, const Valeur& v) {
  if (!EstNul(v)) kLit(objet, v);
}
/// Another reader, of anything but Null and empty text.
template <auto kLit>
void SaufVide(ObjetDe<kLit>& objet, const Valeur& v) {
  if (!EstNulOuVide(v)) kLit(objet, v);
}

}  // namespace zuma::colonnes
