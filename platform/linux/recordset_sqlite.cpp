#include "platform/linux/recordset_sqlite.h"

#include <algorithm>

#include "base/somme_de_controle.h"
#include "core/collections.h"

namespace zuma::linux_ {

RecordsetSqlite::RecordsetSqlite(std::shared_ptr<ConnexionSqlite> connexion,
                                 InstructionPréparée& préparée)
    : connexion_(std::move(connexion)), colonnes_(préparée.colonnes) {
  LitLesLignes(préparée.instruction);
}

void RecordsetSqlite::LitLesLignes(InstructionSqlite& instruction) {
  champs_.reserve(colonnes_->Toutes().size());
  for (const Colonne& colonne : colonnes_->Toutes()) champs_.push_back({colonne.nom, {}});
  while (instruction.Suivante()) {
    LitUneLigne(instruction.Brut());
    if (lignes_.Taille() > connexion_->Bornes().mémoire) {
      Refuse(Numéro::RessourcesDépassées,
             "'" + connexion_->Chemin() + "' (plus de lignes qu'une table de ce système n'en a : " +
                 std::to_string(lignes_.Nombre()) + ")");
    }
  }
}

void RecordsetSqlite::LitUneLigne(sqlite3_stmt* instruction) {
  const bool première = lignes_.Nombre() == 0;  // it stays in hand
  lignes_.OuvreUneLigne(champs_.size());
  for (std::size_t i = 0; i < champs_.size(); ++i) {
    Valeur valeur = LitColonne(instruction, static_cast<int>(i), LaColonne(i).type);
    lignes_.Ajoute(valeur);
    if (première) champs_[i].Value = std::move(valeur);
  }
}

void RecordsetSqlite::PlaceSur(std::size_t rang) {
  enEdition_ = false;
  rang_ = rang;
  if (!FinDeTable()) lignes_.Lit(rang_, champs_);
}

void RecordsetSqlite::ExigeUneLigne() const {
  if (FinDeTable()) throw Echec(Numéro::PasDEnregistrement);
}

void RecordsetSqlite::MoveFirst() {
  if (lignes_.Nombre() == 0) throw Echec(Numéro::PasDEnregistrement);
  enEdition_ = false;
  if (rang_ != 0) PlaceSur(0);
}

void RecordsetSqlite::MoveNext() {
  ExigeUneLigne();
  PlaceSur(rang_ + 1);
}

std::span<const Champ> RecordsetSqlite::Fields() const {
  ExigeUneLigne();
  return champs_;
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
  const auto& colonnes = colonnes_->Toutes();
  std::optional<std::size_t> rang = colonnes_->RangDe(colonne);
  if (!rang) {
    const auto trouvée =
        std::ranges::find_if(colonnes, [&](const Colonne& c) { return MêmeClé(c.nom, colonne); });
    if (trouvée == colonnes.end()) {
      Refuse(Numéro::ElémentAbsent, "colonne '" + std::string(colonne) + "'");
    }
    rang = static_cast<std::size_t>(trouvée - colonnes.begin());
  }
  brouillon_[*rang] = PourColonne(valeur, colonnes[*rang].type, colonne);
}

void RecordsetSqlite::Update() {
  if (!enEdition_) throw Echec(Numéro::EditionSansEdit);
  if (!brouillon_.empty()) EcritLaLigne();
  PlaceSur(rang_);
}

std::size_t RecordsetSqlite::RangDeLIndex(const std::string& table) const {
  const auto& colonnes = colonnes_->Toutes();
  const auto index = std::ranges::find_if(colonnes, [&](const Colonne& colonne) {
    return MêmeClé(colonne.origine, "Index") && colonne.table == table;
  });
  if (table.empty() || index == colonnes.end()) {
    Refuse(Numéro::BaseEnLectureSeule, "la ligne à écrire n'a pas de colonne 'Index'");
  }
  return static_cast<std::size_t>(index - colonnes.begin());
}

RecordsetSqlite::Ligne RecordsetSqlite::Relit(const std::string& table, const Valeur& index) const {
  std::string noms;
  std::vector<std::size_t> rangs;
  for (std::size_t i = 0; i < colonnes_->Toutes().size(); ++i) {
    if (LaColonne(i).table != table) continue;
    noms += (noms.empty() ? "" : ", ") + NomSql(LaColonne(i).origine);
    rangs.push_back(i);
  }
  InstructionSqlite instruction(*connexion_, "SELECT " + noms + " FROM main." + NomSql(table) +
                                                 " WHERE " + NomSql("Index") + "=?");
  instruction.Lie(1, index);
  if (!instruction.Suivante()) throw Echec(Numéro::LigneDisparue);
  Ligne ligne;
  int place = 0;
  for (const std::size_t rang : rangs) {
    ligne.emplace_back(rang, LitColonne(instruction.Brut(), place++, LaColonne(rang).type));
  }
  if (instruction.Suivante()) {
    Refuse(Numéro::InstructionRefusée, "plusieurs lignes de '" + table + "' portent ce même Index");
  }
  return ligne;
}

// What was typed was typed on what stood there then: it must not mix with what another program has
// put there since, nor go to an object that has changed its place with this one.
void RecordsetSqlite::ExigeLaLigneLue(const std::string& table, const Ligne& présente) const {
  const auto changée = std::ranges::find_if(
      présente, [&](const auto& champ) { return champ.second != champs_[champ.first].Value; });
  if (changée == présente.end()) return;
  const auto cité = [](const Valeur& v) { return EstNul(v) ? "Null" : "'" + VersTexte(v) + "'"; };
  const auto& [rang, trouvée] = *changée;
  std::string détail = "table '" + table + "', colonne '" + LaColonne(rang).nom.Texte() +
                       "', lue " + cité(champs_[rang].Value) + ", trouvée " + cité(trouvée);
  if (brouillon_.contains(rang)) détail += ", à écrire " + cité(brouillon_.at(rang));
  for (const auto& [qui, nom] : {std::pair{"Nom de l'Etalonneur", " ; étalonnage de "},
                                 std::pair{"Date d'Etalonnage", " du "}}) {
    const auto dit = std::ranges::find_if(
        présente, [&](const auto& champ) { return LaColonne(champ.first).nom == qui; });
    if (dit != présente.end() && !EstNulOuVide(dit->second)) détail += nom + cité(dit->second);
  }
  Refuse(Numéro::LigneModifiée, détail);
}

// A row that no longer held its sum does not get a new one: nobody has looked at what changed
// there. Nor does one of which not all columns are in hand: its sum would be that of a part.
void RecordsetSqlite::SommeLaLigne(const std::string& table, const Valeur& index,
                                   Ligne& écrite) const {
  const auto somme = std::ranges::find_if(
      écrite, [&](const auto& champ) { return LaColonne(champ.first).nom == kColonneSomme; });
  if (somme == écrite.end() || !SommeTient(*this)) return;
  const InstructionSqlite entière(*connexion_, "SELECT * FROM main." + NomSql(table));
  if (écrite.size() != static_cast<std::size_t>(sqlite3_column_count(entière.Brut()))) return;
  std::vector<Champ> champs;
  for (const auto& [rang, valeur] : écrite) champs.push_back({LaColonne(rang).nom, valeur});
  somme->second = SommeDeContrôle(champs);
  InstructionSqlite instruction(*connexion_, "UPDATE main." + NomSql(table) + " SET " +
                                                 NomSql(kColonneSomme) + "=? WHERE " +
                                                 NomSql("Index") + "=?");
  instruction.Lie(1, somme->second);
  instruction.Lie(2, index);
  static_cast<void>(instruction.Suivante());
}

void RecordsetSqlite::EcritLaLigne() {
  const std::string table = LaColonne(brouillon_.begin()->first).table;
  const Valeur index = champs_[RangDeLIndex(table)].Value;
  // Of the file, whatever stands before it under the same name.
  std::string sql = "UPDATE main." + NomSql(table) + " SET ";
  for (const auto& [rang, valeur] : brouillon_) {
    if (LaColonne(rang).table != table) {
      Refuse(Numéro::BaseEnLectureSeule, "colonnes de deux tables en une écriture");
    }
    if (rang != brouillon_.begin()->first) sql += ", ";
    sql += NomSql(LaColonne(rang).origine) + "=?";
  }
  sql += " WHERE " + NomSql("Index") + "=?";

  TransactionSqlite transaction(*connexion_);
  ExigeLaLigneLue(table, Relit(table, index));
  {
    InstructionSqlite instruction(*connexion_, sql);
    int paramètre = 0;
    for (const auto& [rang, valeur] : brouillon_) instruction.Lie(++paramètre, valeur);
    instruction.Lie(++paramètre, index);
    static_cast<void>(instruction.Suivante());
  }
  const auto renommée = brouillon_.find(RangDeLIndex(table));
  const Valeur& après = renommée == brouillon_.end() ? index : renommée->second;
  Ligne écrite = Relit(table, après);
  SommeLaLigne(table, après, écrite);
  transaction.Valide();
  for (auto& [rang, valeur] : écrite) lignes_.Remplace(rang_, rang, std::move(valeur));
}

}  // namespace zuma::linux_
