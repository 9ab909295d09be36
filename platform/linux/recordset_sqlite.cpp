#include "platform/linux/recordset_sqlite.h"

#include <algorithm>

namespace zuma::linux_ {
namespace {

std::string OuVide(const char* texte) {
  return texte == nullptr ? std::string() : std::string(texte);
}

}  // namespace

RecordsetSqlite::RecordsetSqlite(std::shared_ptr<ConnexionSqlite> connexion, std::string_view sql)
    : connexion_(std::move(connexion)) {
  InstructionSqlite instruction(*connexion_, sql);
  if (sqlite3_stmt_readonly(instruction.Brut()) == 0 ||
      sqlite3_column_count(instruction.Brut()) == 0) {
    Refuse(Numéro::InstructionRefusée, "une sélection est attendue");
  }
  LitLesColonnes(instruction.Brut());
  LitLesLignes(instruction);
}

void RecordsetSqlite::LitLesColonnes(sqlite3_stmt* instruction) {
  const int nombre = sqlite3_column_count(instruction);
  colonnes_.reserve(static_cast<std::size_t>(nombre));
  for (int i = 0; i < nombre; ++i) {
    colonnes_.push_back({OuVide(sqlite3_column_name(instruction, i)),
                         OuVide(sqlite3_column_origin_name(instruction, i)),
                         OuVide(sqlite3_column_table_name(instruction, i)),
                         TypeDéclaré(OuVide(sqlite3_column_decltype(instruction, i)))});
  }
}

void RecordsetSqlite::LitLesLignes(InstructionSqlite& instruction) {
  while (instruction.Suivante()) {
    auto& ligne = lignes_.emplace_back();
    ligne.reserve(colonnes_.size());
    int rang = 0;
    for (const Colonne& colonne : colonnes_) {
      ligne.push_back({colonne.nom, LitColonne(instruction.Brut(), rang++, colonne.type)});
    }
  }
}

void RecordsetSqlite::ExigeUneLigne() const {
  if (FinDeTable()) throw Echec(Numéro::PasDEnregistrement);
}

void RecordsetSqlite::MoveFirst() {
  if (lignes_.empty()) throw Echec(Numéro::PasDEnregistrement);
  enEdition_ = false;
  rang_ = 0;
}

void RecordsetSqlite::MoveNext() {
  ExigeUneLigne();
  enEdition_ = false;
  ++rang_;
}

std::span<const Champ> RecordsetSqlite::Fields() const {
  ExigeUneLigne();
  return lignes_[rang_];
}

void RecordsetSqlite::Edit() {
  ExigeUneLigne();
  if (connexion_->EnLectureSeule()) {
    Refuse(Numéro::BaseEnLectureSeule, "'" + connexion_->Chemin() + "'");
  }
  brouillon_.clear();
  enEdition_ = true;
}

void RecordsetSqlite::Ecrit(std::string_view colonne, Valeur valeur) {
  if (!enEdition_) throw Echec(Numéro::EditionSansEdit);
  const auto trouvée = std::ranges::find(colonnes_, colonne, &Colonne::nom);
  if (trouvée == colonnes_.end()) {
    Refuse(Numéro::ElémentAbsent, "colonne '" + std::string(colonne) + "'");
  }
  const auto rang = static_cast<std::size_t>(trouvée - colonnes_.begin());
  brouillon_[rang] = PourColonne(valeur, trouvée->type, colonne);
}

void RecordsetSqlite::Update() {
  if (!enEdition_) throw Echec(Numéro::EditionSansEdit);
  if (!brouillon_.empty()) EcritLaLigne();
  for (auto& [rang, valeur] : brouillon_) lignes_[rang_][rang].Value = std::move(valeur);
  enEdition_ = false;
}

std::size_t RecordsetSqlite::RangDeLIndex(const std::string& table) const {
  const auto index = std::ranges::find_if(colonnes_, [&](const Colonne& colonne) {
    return colonne.origine == "Index" && colonne.table == table;
  });
  if (table.empty() || index == colonnes_.end()) {
    Refuse(Numéro::BaseEnLectureSeule, "la ligne à écrire n'a pas de colonne 'Index'");
  }
  return static_cast<std::size_t>(index - colonnes_.begin());
}

void RecordsetSqlite::EcritLaLigne() {
  const std::string table = colonnes_[brouillon_.begin()->first].table;
  const std::size_t index = RangDeLIndex(table);
  std::string sql = "UPDATE " + NomSql(table) + " SET ";
  for (const auto& [rang, valeur] : brouillon_) {
    if (colonnes_[rang].table != table) {
      Refuse(Numéro::BaseEnLectureSeule, "colonnes de deux tables en une écriture");
    }
    if (rang != brouillon_.begin()->first) sql += ", ";
    sql += NomSql(colonnes_[rang].origine) + "=?";
  }
  sql += " WHERE " + NomSql("Index") + "=?";

  TransactionSqlite transaction(*connexion_);
  {
    InstructionSqlite instruction(*connexion_, sql);
    int paramètre = 0;
    for (const auto& [rang, valeur] : brouillon_) instruction.Lie(++paramètre, valeur);
    instruction.Lie(++paramètre, lignes_[rang_][index].Value);
    static_cast<void>(instruction.Suivante());
  }
  const int écrites = sqlite3_changes(connexion_->Brut());
  if (écrites == 0) throw Echec(Numéro::LigneDisparue);
  if (écrites > 1) {
    Refuse(Numéro::InstructionRefusée, "plusieurs lignes de '" + table + "' portent ce même Index");
  }
  transaction.Valide();
}

}  // namespace zuma::linux_
