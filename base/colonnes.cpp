#include "base/colonnes.h"

namespace zuma::colonnes {

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
