#include "platform/linux/base_sqlite.h"

#include <array>
#include <filesystem>

#include "platform/linux/copies_indexees.h"
#include "platform/linux/dialecte_sql.h"
#include "platform/linux/recordset_sqlite.h"

namespace zuma::linux_ {
namespace {

using Problèmes = std::vector<BaseSqlite::Problème>;

// A question to the file: one text a row, led by `titre`.
struct Question {
  std::string_view titre;
  std::string_view sql;
};

constexpr std::array kQuestions{
    Question{"Fichier endommagé : ",
             "SELECT integrity_check FROM pragma_integrity_check WHERE integrity_check <> 'ok'"},
    Question{"Référence à une ligne disparue : ",
             "SELECT 'table ' || [table] || ', ligne ' || coalesce(rowid, '?') || "
             "', vers la table ' || parent FROM pragma_foreign_key_check"},
    Question{"Elément étranger au système, sans effet ici : ",
             "SELECT 'déclencheur ' || name FROM sqlite_schema WHERE type='trigger'"},
    Question{"Elément étranger au système, jamais lu : ",
             "SELECT 'vue ' || name FROM sqlite_schema WHERE type='view'"},
    Question{"Elément étranger au système : ",
             "SELECT 'table virtuelle ' || name FROM sqlite_schema "
             "WHERE sql LIKE 'CREATE VIRTUAL%'"},
};

void Répond(const ConnexionSqlite& connexion, const Question& question, Problèmes& problèmes) {
  InstructionSqlite instruction(connexion, question.sql);
  while (instruction.Suivante()) {
    const Valeur texte = LitColonne(instruction.Brut(), 0, TypeColonne::Texte);
    problèmes.push_back({std::string(question.titre) + VersTexte(texte)});
  }
}

// SQLite fills a last page that is cut short with zeros and finds nothing wrong.
void VérifieLaTaille(const ConnexionSqlite& connexion, Problèmes& problèmes) {
  InstructionSqlite instruction(connexion, "PRAGMA page_size");
  if (!instruction.Suivante()) return;
  const Valeur page = LitColonne(instruction.Brut(), 0, TypeColonne::Entier);
  const auto taille = std::filesystem::file_size(connexion.Chemin());
  if (taille % static_cast<std::uintmax_t>(VersEntier32(page)) != 0) {
    problèmes.push_back({"Fichier endommagé : tronqué à " + std::to_string(taille) + " octets"});
  }
}

}  // namespace

BaseSqlite::BaseSqlite(const std::string& chemin, RéglagesBase réglages)
    : connexion_(std::make_shared<ConnexionSqlite>(
          chemin, réglages.lectureSeule ? Accès::Lecture : Accès::Ecriture, réglages.attenteVerrou,
          réglages.bornes)) {}

Ref<Recordset> BaseSqlite::OpenRecordset(std::string_view instruction, int) {
  const ConnexionSqlite::LectureBornée borne(*connexion_);
  if (lectures_) {
    auto& préparée = lectures_->instructions.Donne(*connexion_, instruction);
    return Crée<RecordsetSqlite>(connexion_, préparée);
  }
  InstructionPréparée préparée(*connexion_, TraduitPourSqlite(instruction));
  return Crée<RecordsetSqlite>(connexion_, préparée);
}

// A transaction takes its view of the file with its first read.
void BaseSqlite::DébuteLesLectures() {
  connexion_->Exécute("BEGIN");
  try {
    lectures_.emplace(*connexion_);
    connexion_->Exécute("SELECT count(*) FROM sqlite_schema");
    CopieLesGrandesTables(*connexion_);
  } catch (...) {
    FinitLesLectures();
    throw;
  }
}

void BaseSqlite::FinitLesLectures() noexcept {
  lectures_.reset();
  sqlite3_exec(connexion_->Brut(), "ROLLBACK", nullptr, nullptr, nullptr);
}

std::vector<BaseSqlite::Problème> BaseSqlite::ProblèmesDIntégrité() const {
  const ConnexionSqlite::LectureBornée borne(*connexion_);
  Problèmes problèmes;
  // False once the time of the reading is over: no question behind it gets an answer.
  const auto demande = [&](std::string_view titre, auto&& question) {
    try {
      question();
    } catch (...) {
      const Echec échec = EchecCourant(__LINE__);
      if (échec.NuméroErreur() == static_cast<int>(Numéro::LectureInterrompue)) {
        problèmes.push_back({"Fichier pas examiné jusqu'au bout : " + échec.Description(), false});
        return false;
      }
      problèmes.push_back({std::string(titre) + échec.Description()});
    }
    return true;
  };
  if (!demande("Taille du fichier : ", [&] { VérifieLaTaille(*connexion_, problèmes); })) {
    return problèmes;
  }
  for (const Question& question : kQuestions) {
    if (!demande(question.titre, [&] { Répond(*connexion_, question, problèmes); })) break;
  }
  return problèmes;
}

}  // namespace zuma::linux_
