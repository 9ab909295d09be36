#include "platform/linux/copies_indexees.h"

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/schema.h"

namespace zuma::linux_ {
namespace {

// Rows; below, reading the whole table for each of its objects costs less than a copy of it.
constexpr int kGrande = 60;

// The columns by which a load asks for rows of that table.
std::vector<std::string_view> Recherchées(const TableDuSchéma& table) {
  if (table.liaison) return {table.objetLié};
  if (table.nom == "Fonction") return {"Index", "Carte"};
  if (table.nom == "Canal") return {"Index", "Fonction"};
  return {"Index"};
}

// First column of the first row; empty when there is none.
std::string Demande(const ConnexionSqlite& connexion, const std::string& sql, int rang = 0) {
  InstructionSqlite instruction(connexion, sql);
  if (!instruction.Suivante()) return {};
  const Valeur valeur = LitColonne(instruction.Brut(), rang, TypeColonne::Quelconque);
  return EstNul(valeur) ? std::string() : VersTexte(valeur);
}

bool ParcourueEntière(const ConnexionSqlite& connexion, const std::string& nom,
                      std::string_view colonne) {
  constexpr int kDétail = 3;  // of the rows of a plan
  const std::string plan = Demande(
      connexion,
      "EXPLAIN QUERY PLAN SELECT 1 FROM main." + nom + " WHERE " + NomSql(colonne) + "=1", kDétail);
  return plan.starts_with("SCAN");
}

// Half a copy must not be read: what cannot be dropped goes with the transaction.
void RetireOuAnnule(const ConnexionSqlite& connexion, const std::string& retire) noexcept {
  const auto exécute = [&](const char* sql) {
    return sqlite3_exec(connexion.Brut(), sql, nullptr, nullptr, nullptr);
  };
  if (exécute(retire.c_str()) != SQLITE_OK) exécute("ROLLBACK");
}

void Copie(ConnexionSqlite& connexion, const std::string& nom, std::string_view table,
           const std::vector<std::string_view>& colonnes) {
  constexpr std::string_view kDébut = "CREATE TABLE";
  std::string définition =
      Demande(connexion, "SELECT sql FROM main.sqlite_schema WHERE type='table' AND name='" +
                             std::string(table) + "' COLLATE NOCASE");
  if (!définition.starts_with(kDébut)) return;
  définition.replace(0, kDébut.size(), "CREATE TEMP TABLE");
  const std::string retire = "DROP TABLE IF EXISTS temp." + nom;
  connexion.Exécute(définition.c_str());
  try {
    connexion.Exécute(("INSERT INTO temp." + nom + " SELECT * FROM main." + nom).c_str());
    for (const std::string_view colonne : colonnes) {
      const std::string index = std::string(table) + " par " + std::string(colonne);
      connexion.Exécute(
          ("CREATE INDEX temp." + NomSql(index) + " ON " + nom + " (" + NomSql(colonne) + ")")
              .c_str());
    }
  } catch (...) {
    RetireOuAnnule(connexion, retire);
    throw;
  }
}

}  // namespace

// The statements of a load are those of every database of this system and stay: what they find is
// put in their way, at the beginning of the transaction in which it reads.
void CopieLesGrandesTables(ConnexionSqlite& connexion) {
  for (const TableDuSchéma& table : TablesDuSchéma()) {
    const std::string nom = NomSql(table.nom);
    try {
      const std::string grande =
          "SELECT 1 FROM main." + nom + " LIMIT 1 OFFSET " + std::to_string(kGrande);
      if (Demande(connexion, grande).empty()) continue;
      std::vector<std::string_view> colonnes = Recherchées(table);
      std::erase_if(colonnes, [&](std::string_view colonne) {
        return !ParcourueEntière(connexion, nom, colonne);
      });
      if (!colonnes.empty()) Copie(connexion, nom, table.nom, colonnes);
    } catch (const Echec& échec) {
      // A table that is missing, or that cannot be copied, is read where and as it stands. Some
      // failures end the transaction: a copy made after that would outlive it, hide the table of
      // the file, and take the calibrations that are saved.
      if (sqlite3_get_autocommit(connexion.Brut()) != 0) throw;
      if (échec.NuméroErreur() == static_cast<int>(Numéro::LectureInterrompue)) throw;
    }
  }
}

}  // namespace zuma::linux_
