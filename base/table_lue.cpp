#include "base/table_lue.h"

#include <array>
#include <string>

#include "base/colonnes.h"

namespace zuma::colonnes {
namespace {

struct NomsDuPoint {
  std::string unité;
  std::string point;
};
using NomsDesPoints = std::array<NomsDuPoint, TableEtalonnage::kMaxPoints>;

NomsDesPoints Nomme() {
  NomsDesPoints noms;
  for (std::size_t i = 0; i < noms.size(); ++i) {
    const std::string début = "Point " + std::to_string(i + 1);
    noms[i] = {début + " - Unité", début + " - Point"};
  }
  return noms;
}

}  // namespace

void LitTable(const Recordset& ligne, TableEtalonnage& table) {
  using Colonne = TableEtalonnage::Colonne;
  static const NomsDesPoints kNoms = Nomme();
  table.Remplit([&](Colonne& unités, Colonne& points) {
    std::size_t rangée = 0;
    for (const auto& [unité, point] : kNoms) {
      ++rangée;
      unités[rangée] = Nombre(ligne, unité);
      points[rangée] = Nombre(ligne, point);
    }
  });
}

}  // namespace zuma::colonnes
