#include "host/verbes/verifie_le_sens.h"

#include "base/echec.h"
#include "host/verbes/controles_croises.h"
#include "host/verbes/controles_de_ligne.h"
#include "host/verbes/controles_des_noms.h"
#include "platform/linux/schema.h"

namespace zuma::host {
namespace {

std::vector<std::string_view> Manquantes(const linux_::TableDuSchéma& table,
                                         const Recordset& ligne) {
  std::vector<std::string_view> noms;
  for (const linux_::ColonneDuSchéma& colonne : table.colonnes) {
    if (Lue(ligne, colonne) == nullptr) noms.push_back(colonne.nom);
  }
  return noms;
}

struct Contrôles {
  ParamètresRef paramètres;
  Constats constats;
  Relevé relevé{};
  ContrôleDesNoms noms{};

  void Prend(const linux_::TableDuSchéma& table, Recordset& lignes) {
    if (lignes.FinDeTable()) return;
    ContrôleLesColonnes(table.nom, Manquantes(table, lignes), lignes, constats);
    const LigneLue ligne(table.nom, lignes);
    for (; !lignes.FinDeTable(); lignes.MoveNext()) {
      relevé.Prend(ligne);
      noms.Prend(ligne, constats);
      ContrôleLaLigne(ligne, paramètres, constats);
    }
  }
};

}  // namespace

void VérifieLeSens(BaseDeDonnées& base, const ParamètresRef& paramètres, Recueil& recueil) {
  Contrôles contrôles{paramètres, Constats(recueil)};
  for (const linux_::TableDuSchéma& table : linux_::TablesDuSchéma()) {
    try {
      contrôles.Prend(table, *base.OpenRecordset("SELECT * FROM [" + std::string(table.nom) + "]"));
    } catch (const Echec&) {
      // A table that cannot be read is told by `VérifieLesDonnées`.
    }
  }
  ContrôleLesRenvois(contrôles.relevé, contrôles.constats);
}

}  // namespace zuma::host
