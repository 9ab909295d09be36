#include "core/colonnes.h"

#include "core/outils_communs.h"

namespace zuma::colonnes {
namespace {

template <class Conversion>
auto EnNommant(std::string_view colonne, Conversion&& conversion) {
  try {
    return conversion();
  } catch (const Echec& échec) {
    throw Echec(static_cast<Numéro>(échec.NuméroErreur()),
                échec.Description() + " : colonne '" + std::string(colonne) + "'");
  }
}

}  // namespace

std::string Texte(const Valeur& valeur, std::string_view colonne) {
  return EnNommant(colonne, [&] { return VersTexte(valeur); });
}

double Nombre(const Valeur& valeur, std::string_view colonne) {
  return EnNommant(colonne, [&] { return VersDouble(OutilsCommuns::LitChampSûr(valeur)); });
}

std::int32_t Entier32(const Valeur& valeur, std::string_view colonne) {
  return EnNommant(colonne, [&] { return VersEntier32(OutilsCommuns::LitChampSûr(valeur)); });
}

std::string Texte(const Recordset& ligne, std::string_view colonne) {
  return Texte(LitChamp(ligne, colonne), colonne);
}

double Nombre(const Recordset& ligne, std::string_view colonne) {
  return Nombre(LitChamp(ligne, colonne), colonne);
}

}  // namespace zuma::colonnes
