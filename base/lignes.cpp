#include "base/lignes.h"

namespace zuma::lignes {

std::string Lieu(std::string_view table, const Recordset& liste) {
  std::string lieu = " : table '" + std::string(table) + "'";
  const Valeur* index = ChampNommé(liste, "Index");
  if (index != nullptr && !EstNul(*index)) lieu += ", ligne " + VersTexte(*index);
  return lieu;
}

}  // namespace zuma::lignes
