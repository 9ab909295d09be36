#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/problemes.h"
#include "platform/base_de_donnees.h"
#include "platform/linux/schema.h"

namespace zuma::host {

/// A row of the database as the library takes it: numbers as numbers or texts, no value where the
/// column is missing, Null, empty or unreadable. What is unreadable is told by
/// `VérifieLesDonnées`.
class LigneLue {
 public:
  /// Reads the row in hand of `lignes`, which outlives it, and every row that follows.
  LigneLue(std::string_view table, const Recordset& lignes);

  /// Name of the table.
  [[nodiscard]] std::string_view Table() const { return table_; }
  /// The field of exactly that name, or none.
  [[nodiscard]] const Valeur* Cherche(std::string_view colonne) const;
  /// Its "Index"; in a link table without one the numbers of frame and object.
  [[nodiscard]] std::string Désignation() const;
  /// A number, from a number or a text with comma or point.
  [[nodiscard]] std::optional<double> Nombre(std::string_view colonne) const;
  /// A whole number of 32 bits.
  [[nodiscard]] std::optional<std::int32_t> Entier(std::string_view colonne) const;
  /// Index of a row or of a parameter: 0 is none.
  [[nodiscard]] std::int32_t Renvoi(std::string_view colonne) const {
    return Entier(colonne).value_or(0);
  }
  /// Empty where there is none.
  [[nodiscard]] std::string Texte(std::string_view colonne) const;
  /// True on a value that means so; false where there is none.
  [[nodiscard]] bool Vrai(std::string_view colonne) const;

 private:
  std::string_view table_;
  const Recordset& lignes_;
  std::unordered_map<std::string, std::size_t> rangs_;  ///< of the columns: looked up for each row
};

/// The column as the system reads it: a required one by its name in whatever case, any other in the
/// walk over a row by exactly its name. None when it is not there.
[[nodiscard]] const Valeur* Lue(const Recordset& lignes, const linux_::ColonneDuSchéma& colonne);

/// What is wrong with a value of a row.
struct Constat {
  std::string_view colonne;           ///< name of the column
  Gravité gravité = Gravité::Erreur;  ///< how bad it is
  std::string_view texte;             ///< what is wrong
  std::string trouvé;                 ///< value found
  std::string attendu;                ///< value expected
};

/// What the checks found, each with its table and row.
class Constats {
 public:
  /// Collects into `recueil`, which outlives it.
  explicit Constats(Recueil& recueil) : recueil_(recueil) {}
  ///@{
  /// Keeps what was found, once.
  void Dit(const LigneLue& ligne, Constat constat);
  /// `ligne`: "Index" of the row, or what stands for it in a link table without one.
  void Dit(std::string_view table, std::string ligne, Constat constat);
  ///@}

 private:
  Recueil& recueil_;
};

/// A text as it is shown in a problem.
[[nodiscard]] inline std::string Cite(std::string_view texte) {
  return "\"" + std::string(texte) + "\"";
}

}  // namespace zuma::host
