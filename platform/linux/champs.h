#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base_de_donnees.h"

/// Fields of rows to be written.
namespace zuma::linux_::champs {

/// A text, empty ones too.
[[nodiscard]] inline Champ Texte(std::string_view colonne, std::string_view texte) {
  return {std::string(colonne), Valeur(std::string(texte))};
}
/// Null in place of an empty text.
[[nodiscard]] inline Champ TexteOuNul(std::string_view colonne, std::string_view texte) {
  return texte.empty() ? Champ{std::string(colonne), Valeur(Nul{})} : Texte(colonne, texte);
}
/// A whole number.
[[nodiscard]] inline Champ Entier(std::string_view colonne, std::int32_t n) {
  return {std::string(colonne), Valeur(n)};
}
/// A number.
[[nodiscard]] inline Champ Réel(std::string_view colonne, double n) {
  return {std::string(colonne), Valeur(n)};
}
/// A boolean.
[[nodiscard]] inline Champ Booléen(std::string_view colonne, bool b) {
  return {std::string(colonne), Valeur(b)};
}

}  // namespace zuma::linux_::champs
