#include "base/outils_communs.h"

#include <charconv>

#include "base/echec.h"

namespace zuma::OutilsCommuns {

Valeur LitChampSûr(const Valeur& champ) {
  const auto* texte = std::get_if<std::string>(&champ);
  if (texte == nullptr) return champ;
  double nombre = 0;
  return LitNombre(*texte, nombre) ? Valeur(nombre) : Valeur(Nul{});
}

std::int32_t HexaVersLong(const Valeur& texte, std::source_location où) {
  // A numeric column holds the digits themselves: 220 there means 0x220, like the text "220".
  const std::string écrit = VersTexte(texte, où);
  const std::string_view chiffres = SansBlancs(écrit);
  std::uint32_t lu = 0;
  const auto [reste, erreur] =
      std::from_chars(chiffres.data(), chiffres.data() + chiffres.size(), lu, 16);
  if (erreur != std::errc() || reste != chiffres.data() + chiffres.size()) {
    throw Echec(Numéro::TypeIncompatible,
                DescriptionDEchec(Numéro::TypeIncompatible) + " : '" + écrit +
                    "' n'est pas un nombre hexadécimal",
                où);
  }
  return static_cast<std::int32_t>(lu);
}

std::string FormateNombre(const Valeur& nombre, char séparateur) {
  return TexteDeNombre(VersDouble(nombre), séparateur);
}

}  // namespace zuma::OutilsCommuns
