#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/ref.h"

namespace zuma {

class Objet;

/// One line of an object's block: its label, with the blanks that end it, and the member it shows.
template <class T>
struct ChampVidé {
  /// Label of the line, its blanks included.
  std::string_view libellé;
  /// Text or number that stands behind it.
  std::variant<std::string T::*, double T::*, std::int32_t T::*, std::int16_t T::*> membre;
};

/// Words of a flag in the dump: no, yes.
inline constexpr std::string_view kNonOui[] = {"Non", "Oui"};
/// Digits of a flag in the dump: off, on.
inline constexpr std::string_view kZéroUn[] = {"0", "1"};

/// Block of one object in the diagnostic dump: a banner, then lines of a label and its value. It is
/// made in memory and appended to the file as a whole, so that the file is open for no longer.
class BlocDeVidage {
 public:
  /// `retrait` blanks lead each line; `titre` is the line of the banner that bears the class word,
  /// stars included: its blanks do not follow from the word's length.
  BlocDeVidage(std::size_t retrait, std::string_view titre);

  /// A line with a text.
  void Texte(std::string_view libellé, std::string_view texte);
  /// A line with a number as people read it, decimal comma.
  void Nombre(std::string_view libellé, double nombre);
  /// In hexadecimal, upper case; a negative address as its 32 bits.
  void Adresse(std::string_view libellé, std::int32_t adresse);
  /// The text of that rank. No line for a rank that has none: what is not known is not guessed.
  void Choix(std::string_view libellé, std::span<const std::string_view> textes, std::int32_t rang);
  /// Both values of a row of a calibration table; `objet` ends their labels.
  void Point(std::int32_t indice, std::string_view objet, double unités, double points);

  /// One line for each of the members, in the order of the table.
  template <class T>
  void Champs(const T& objet, std::span<const ChampVidé<T>> champs) {
    for (const ChampVidé<T>& champ : champs) {
      std::visit([&](auto membre) { Champ(champ.libellé, objet.*membre); }, champ.membre);
    }
  }
  /// One line for each member of a collection, with its name; none for Nothing.
  template <class Collection>
  void Noms(std::string_view libellé, const Ref<Collection>& collection) {
    if (!collection) return;
    for (const auto& membre : *collection) Texte(libellé, membre->NomPourErreur());
  }

  /// Appends the block to the file `ou` of the host. A failure goes to the caller.
  void Ajoute(const Objet& objet, std::string_view ou) const;

 private:
  void Champ(std::string_view libellé, const std::string& texte) { Texte(libellé, texte); }
  void Champ(std::string_view libellé, double nombre) { Nombre(libellé, nombre); }

  std::string retrait_;
  std::vector<std::string> lignes_;
};

/// Hands the path of the dump to each member of a collection, in order.
template <class Collection>
void VideLesMembres(const Ref<Collection>& collection, const std::string& ou) {
  if (!collection) return;
  for (const auto& membre : *collection) membre->AutoSave(ou);
}

}  // namespace zuma
