#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/echec.h"
#include "base/garde.h"
#include "platform/base_de_donnees.h"

namespace zuma::lignes {

/// " : table 'T', ligne N" of the row in hand, whose number may itself be missing.
[[nodiscard]] std::string Lieu(std::string_view table, const Recordset& liste);

/// Runs `travail` on the "Index" of the row in hand; a failure is told with table and row.
template <class Travail>
void EnNommant(std::string_view table, const Recordset& liste, Travail&& travail) {
  try {
    travail(VersEntier32(LitChamp(liste, "Index")));
  } catch (const Echec& échec) {
    throw échec.Précisé(Lieu(table, liste));
  }
}

/// Runs `charge` on the "Index" of every row of a list, in order. A row that fails is a failure of
/// operation `nom` that names table and row; the rows behind it are loaded all the same: one bad
/// row, or a key that is there twice, would otherwise take the stop inputs behind it along. Behind
/// a reading that was interrupted nothing more can be read: the walk ends.
template <class Charge>
void PourChacune(const Objet& objet, Forme forme, std::string_view nom, std::string_view table,
                 Recordset& liste, Charge&& charge) {
  if (liste.RecordCount() == 0) return;
  bool interrompue = false;
  const auto chargeLaLigne = [&] {
    try {
      EnNommant(table, liste, charge);
    } catch (const Echec& échec) {
      interrompue = échec.NuméroErreur() == static_cast<int>(Numéro::LectureInterrompue);
      throw;
    }
  };
  for (liste.MoveFirst(); !liste.FinDeTable() && !interrompue; liste.MoveNext()) {
    Garde(objet, forme, nom, chargeLaLigne);
  }
}

}  // namespace zuma::lignes
