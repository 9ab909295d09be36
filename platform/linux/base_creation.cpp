#include "platform/linux/base_creation.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/connexion_sqlite.h"
#include "platform/linux/schema.h"

namespace zuma::linux_ {
namespace {

// Takes the name at once, so that no other program's file is ever overwritten, and gives it back
// unless the file was completed.
class NomRéservé {
 public:
  explicit NomRéservé(const std::string& chemin) : chemin_(chemin) {
    constexpr mode_t kDroits = 0644;
    const int fd = ::open(chemin.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kDroits);
    if (fd < 0) {
      const int erreur = errno;
      if (erreur == EEXIST) Refuse(Numéro::FichierExistant, "'" + chemin + "'");
      Refuse(erreur == ENOENT ? Numéro::CheminIntrouvable : Numéro::ErreurDeFichier,
             "'" + chemin + "' (" + std::strerror(erreur) + ")");
    }
    ::close(fd);
  }
  ~NomRéservé() {
    if (gardé_) return;
    std::error_code ignorée;
    std::filesystem::remove(chemin_, ignorée);
    std::filesystem::remove(chemin_ + "-journal", ignorée);
  }
  NomRéservé(const NomRéservé&) = delete;
  NomRéservé& operator=(const NomRéservé&) = delete;
  void Garde() { gardé_ = true; }

 private:
  std::string chemin_;
  bool gardé_ = false;
};

void InsèreLaLigne(const ConnexionSqlite& connexion, const LigneDeBase& ligne) {
  const TableDuSchéma* table = TrouveTable(ligne.table);
  if (table == nullptr) Refuse(Numéro::TableAbsente, "'" + ligne.table + "'");
  std::string noms;
  std::string places;
  std::vector<Valeur> valeurs;
  for (const Champ& champ : ligne.champs) {
    const ColonneDuSchéma* colonne = table->TrouveColonne(champ.Name);
    if (colonne == nullptr) {
      Refuse(Numéro::ColonneAbsente,
             "'" + champ.Name.Texte() + "' de la table '" + ligne.table + "'");
    }
    if (!noms.empty()) noms += ", ";
    noms += NomSql(champ.Name);
    places += places.empty() ? "?" : ", ?";
    valeurs.push_back(PourColonne(champ.Value, colonne->type, champ.Name));
  }
  const std::string suite =
      noms.empty() ? " DEFAULT VALUES" : " (" + noms + ") VALUES (" + places + ")";
  InstructionSqlite instruction(connexion, "INSERT INTO " + NomSql(ligne.table) + suite);
  int rang = 0;
  for (const Valeur& valeur : valeurs) instruction.Lie(++rang, valeur);
  static_cast<void>(instruction.Suivante());
}

}  // namespace

void CréeBase(const std::string& chemin, std::span<const LigneDeBase> lignes) {
  NomRéservé nom(chemin);
  ConnexionSqlite connexion(chemin, Accès::Création, std::chrono::milliseconds(0));
  TransactionSqlite transaction(connexion);
  for (const TableDuSchéma& table : TablesDuSchéma()) {
    connexion.Exécute(InstructionDeCréation(table).c_str());
  }
  for (const LigneDeBase& ligne : lignes) InsèreLaLigne(connexion, ligne);
  transaction.Valide();
  nom.Garde();
}

}  // namespace zuma::linux_
