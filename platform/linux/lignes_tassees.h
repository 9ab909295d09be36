#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/valeur.h"
#include "platform/base_de_donnees.h"

namespace zuma::linux_ {

/// The values of many rows of one shape, some ten bytes each instead of forty: a table of a hundred
/// thousand rows fits into the memory of a small machine.
class LignesTassées {
 public:
  /// Begins a row of that many values, which `Ajoute` takes.
  void OuvreUneLigne(std::size_t valeurs) {
    constexpr std::size_t kParValeur = 10;  // bytes, about
    if (débuts_.empty()) octets_.reserve(valeurs * kParValeur);
    débuts_.push_back(octets_.size());
  }
  /// The next value of the row begun last.
  void Ajoute(const Valeur& valeur);
  /// Rows begun so far.
  [[nodiscard]] std::size_t Nombre() const noexcept { return débuts_.size(); }
  /// Bytes held.
  [[nodiscard]] std::size_t Taille() const noexcept {
    return octets_.size() + débuts_.size() * sizeof(std::size_t);
  }
  /// The values of row `rang`, in the order in which they were added.
  void Lit(std::size_t rang, std::span<Champ> champs) const;
  /// Another value for one field of one row.
  void Remplace(std::size_t rang, std::size_t colonne, Valeur valeur) {
    remplacées_[{rang, colonne}] = std::move(valeur);
  }

 private:
  std::string octets_;
  std::vector<std::size_t> débuts_;
  std::map<std::pair<std::size_t, std::size_t>, Valeur> remplacées_;
};

}  // namespace zuma::linux_
