#include "platform/linux/instructions_preparees.h"

#include "platform/linux/dialecte_sql.h"

namespace zuma::linux_ {
namespace {

// Far more than this system has; a host whose statements all differ must not fill the memory.
constexpr std::size_t kFormes = 64;

// Statements. A look at the clock costs as much as a short one; a long one is watched as it runs.
constexpr unsigned kEntreDeuxRegards = 16;

}  // namespace

InstructionPréparée::InstructionPréparée(const ConnexionSqlite& connexion, std::string_view sql)
    : instruction(connexion, sql) {
  if (sqlite3_stmt_readonly(instruction.Brut()) == 0 ||
      sqlite3_column_count(instruction.Brut()) == 0) {
    Refuse(Numéro::InstructionRefusée, "une sélection est attendue");
  }
  colonnes = std::make_shared<const ColonnesSqlite>(instruction.Brut());
}

InstructionPréparée& InstructionsPréparées::Donne(const ConnexionSqlite& connexion,
                                                  std::string_view instruction) {
  if (demandes_++ % kEntreDeuxRegards == 0 || connexion.Arrêtée()) connexion.ExigeDePoursuivre();
  FormeDInstruction forme = SépareLesNombres(instruction);
  auto préparée = formes_.find(forme.texte);
  if (préparée == formes_.end()) {
    if (formes_.size() == kFormes) formes_.clear();
    const std::string sql = TraduitPourSqlite(forme.texte);
    préparée = formes_.try_emplace(std::move(forme.texte), connexion, sql).first;
  }
  préparée->second.instruction.Recommence(forme.nombres);
  return préparée->second;
}

}  // namespace zuma::linux_
