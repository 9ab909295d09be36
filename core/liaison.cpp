#include "core/liaison.h"

#include "base/outils_communs.h"
#include "core/recherche.h"

namespace zuma::liaison {

bool EstZéro(const Valeur& index) {
  const Valeur nombre = OutilsCommuns::LitChampSûr(index);
  return !EstNul(nombre) && VersDouble(nombre) == 0;
}

std::optional<std::string> CléDIndex(const Valeur& index) {
  if (EstNul(index) || EstZéro(index)) return {};
  return VersTexte(index);
}

std::string Introuvable(std::string_view sujet, const Objet& objet, std::string_view utilise,
                        std::string_view référence, std::string_view fin) {
  std::string texte(sujet);
  texte.append(objet.NomPourErreur()).append(utilise).append(référence).append(fin);
  return texte;
}

void LieLeCanal(const Objet& objet, std::string_view sujet, Chassis* chassis, const Valeur& index,
                CanalRef& canal) {
  if (chassis == nullptr) return;
  const auto clé = CléDIndex(index);
  if (!clé) return;
  const CanalRef trouvé = recherche::CanalDeClé(*chassis, *clé);
  if (trouvé) {
    canal = trouvé;
  } else {
    objet.Montre(Introuvable(sujet, objet, "' utilise un canal d'index '", *clé,
                             "' qui n'a pas été trouvé."));
  }
}

}  // namespace zuma::liaison
