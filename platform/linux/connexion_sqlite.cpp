#include "platform/linux/connexion_sqlite.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <variant>

namespace zuma::linux_ {
namespace {

struct Code {
  int rc;
  Numéro numéro;
};

// Extended codes stand before the primary code they belong to.
constexpr std::array kCodes{
    Code{SQLITE_READONLY_DBMOVED, Numéro::FichierIntrouvable},
    Code{SQLITE_CONSTRAINT_NOTNULL, Numéro::NullIncorrect},
    Code{SQLITE_BUSY, Numéro::BaseVerrouillée},
    Code{SQLITE_LOCKED, Numéro::BaseVerrouillée},
    Code{SQLITE_INTERRUPT, Numéro::LectureInterrompue},
    Code{SQLITE_TOOBIG, Numéro::RessourcesDépassées},
    Code{SQLITE_READONLY, Numéro::BaseEnLectureSeule},
    Code{SQLITE_CORRUPT, Numéro::BaseIllisible},
    Code{SQLITE_NOTADB, Numéro::BaseIllisible},
    Code{SQLITE_NOMEM, Numéro::MémoireInsuffisante},
    Code{SQLITE_CANTOPEN, Numéro::ErreurDeFichier},
    Code{SQLITE_IOERR, Numéro::ErreurDeFichier},
    Code{SQLITE_FULL, Numéro::ErreurDeFichier},
    Code{SQLITE_PERM, Numéro::ErreurDeFichier},
    Code{SQLITE_AUTH, Numéro::ErreurDeFichier},
};

// A statement that names what the file does not hold has no code of its own, only its text.
Numéro DuTexte(std::string_view texte) {
  if (texte.starts_with("no such table")) return Numéro::TableAbsente;
  if (texte.starts_with("no such column")) return Numéro::ColonneAbsente;
  return Numéro::InstructionRefusée;
}

Numéro NuméroDuCode(int rc, std::string_view texte) {
  constexpr int kPrimaire = 0xFF;
  for (const Code& code : kCodes) {
    if (code.rc == rc || code.rc == (rc & kPrimaire)) return code.numéro;
  }
  return DuTexte(texte);
}

// SQLite takes an empty file for an empty database, and a missing one needs its own words.
void VérifieLeFichier(const std::string& chemin, Accès accès) {
  std::error_code erreur;
  const std::string cité = "'" + chemin + "'";
  const auto état = std::filesystem::status(chemin, erreur);
  if (!std::filesystem::exists(état)) Refuse(Numéro::FichierIntrouvable, cité);
  if (std::filesystem::is_directory(état)) {
    Refuse(Numéro::BaseIllisible, cité + " (c'est un dossier)");
  }
  const auto taille = std::filesystem::file_size(chemin, erreur);
  if (!erreur && taille == 0 && accès != Accès::Création)
    Refuse(Numéro::BaseIllisible, cité + " (fichier vide)");
}

constexpr int kPlusGrandeLigne = 32 << 20;    // bytes, a host's pictures included
constexpr int kPasEntreDeuxRegards = 10'000;  // steps of a statement, about a millisecond

constexpr std::string_view kARétablir =
    ". Un enregistrement y a été interrompu : le fichier est à rétablir. L'ouvrir une fois avec "
    "les "
    "droits d'écriture sur le fichier et son dossier, le fichier '-journal' ou '-wal' à côté de "
    "lui.";

std::chrono::nanoseconds TempsDuProcesseur() noexcept {
  timespec temps{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &temps);
  return std::chrono::seconds(temps.tv_sec) + std::chrono::nanoseconds(temps.tv_nsec);
}

// A journal beside the file that holds something: of another program at work, or of one that died.
bool SauvegardeInachevée(const std::string& chemin) {
  constexpr std::array kSuffixes{"-journal", "-wal"};
  return std::ranges::any_of(kSuffixes, [&](const char* suffixe) {
    std::error_code erreur;
    const auto taille = std::filesystem::file_size(chemin + suffixe, erreur);
    return !erreur && taille != 0;
  });
}

}  // namespace

ConnexionSqlite::ConnexionSqlite(const std::string& chemin, Accès accès,
                                 std::chrono::milliseconds attente, const BornesDeLecture& bornes)
    : chemin_(chemin), bornes_(bornes) {
  VérifieLeFichier(chemin_, accès);
  if (accès == Accès::Lecture && SauvegardeInachevée(chemin_)) Rétablit(attente);
  Ouvre(accès == Accès::Lecture ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE, attente);
}

void ConnexionSqlite::Ouvre(int mode, std::chrono::milliseconds attente) {
  // One thread at a time: a lock taken around each value read would cost as much as the reading.
  constexpr int kOptions = SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX;
  sqlite3* base = nullptr;
  const int rc = sqlite3_open_v2(chemin_.c_str(), &base, mode | kOptions, nullptr);
  base_.reset(base);
  if (rc != SQLITE_OK) Echoue(rc);
  sqlite3_busy_timeout(base, static_cast<int>(attente.count()));
  sqlite3_limit(base, SQLITE_LIMIT_LENGTH, kPlusGrandeLigne);
  sqlite3_progress_handler(base, kPasEntreDeuxRegards, &Surveille, this);
  sqlite3_set_authorizer(base, &Autorise, this);
  Protège();
  // Opening reads nothing: this is where a file that is no database shows.
  Exécute("SELECT count(*) FROM sqlite_schema");
}

// Only who may write can put back what a save that was cut short has half replaced. Who may not
// would read the half, or a message that speaks of anything else.
void ConnexionSqlite::Rétablit(std::chrono::milliseconds attente) {
  try {
    Ouvre(SQLITE_OPEN_READWRITE, attente);
  } catch (const Echec& échec) {
    if (échec.NuméroErreur() == static_cast<int>(Numéro::BaseVerrouillée)) throw;
    throw échec.Précisé(kARétablir);
  }
}

void ConnexionSqlite::Protège() {
  struct Option {
    int option;
    int état;
  };
  // Without the DQS options a misspelt quoted name would be taken for a text.
  constexpr std::array kOptions{
      Option{SQLITE_DBCONFIG_DEFENSIVE, 1}, Option{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
      Option{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, Option{SQLITE_DBCONFIG_DQS_DML, 0},
      Option{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}};
  for (const Option& o : kOptions) {
    const int rc = sqlite3_db_config(base_.get(), o.option, o.état, static_cast<int*>(nullptr));
    if (rc != SQLITE_OK) Echoue(rc);
  }
  Exécute("PRAGMA synchronous=FULL");
  Exécute("PRAGMA cell_size_check=ON");
  Exécute("PRAGMA temp_store=MEMORY");
}

const char* ConnexionSqlite::MotifDArrêt() const noexcept {
  if (!échéance_ || motif_ != nullptr) return motif_;
  if (bornes_.interrompue != nullptr && bornes_.interrompue()) {
    motif_ = "le programme se termine";
  } else if (TempsDuProcesseur() >= *échéance_) {
    motif_ = "le temps admis est dépassé";
  }
  return motif_;
}

void ConnexionSqlite::ExigeDePoursuivre(std::source_location où) const {
  if (MotifDArrêt() != nullptr) Echoue(SQLITE_INTERRUPT, où);
}

int ConnexionSqlite::Surveille(void* connexion) noexcept {
  return static_cast<const ConnexionSqlite*>(connexion)->MotifDArrêt() != nullptr ? 1 : 0;
}

// What is read on behalf of a view bears the name of the view.
int ConnexionSqlite::Autorise(void* connexion, int, const char*, const char*, const char*,
                              const char* vue) noexcept {
  auto& moi = *static_cast<ConnexionSqlite*>(connexion);
  if (vue == nullptr || !moi.échéance_) return SQLITE_OK;
  moi.vue_ = vue;
  return SQLITE_DENY;
}

ConnexionSqlite::LectureBornée::LectureBornée(ConnexionSqlite& connexion)
    : connexion_(connexion), première_(!connexion.échéance_) {
  if (première_) connexion.échéance_ = TempsDuProcesseur() + connexion.bornes_.durée;
}

ConnexionSqlite::LectureBornée::~LectureBornée() {
  if (!première_) return;
  connexion_.échéance_.reset();
  connexion_.motif_ = nullptr;
}

bool ConnexionSqlite::EnLectureSeule() const noexcept {
  return sqlite3_db_readonly(base_.get(), "main") != 0;
}

void ConnexionSqlite::Exécute(const char* sql, std::source_location où) {
  const int rc = sqlite3_exec(base_.get(), sql, nullptr, nullptr, nullptr);
  if (rc != SQLITE_OK) Echoue(rc, où);
}

void ConnexionSqlite::Echoue(int rc, std::source_location où) const {
  if (rc == SQLITE_AUTH && !vue_.empty()) {
    Refuse(Numéro::TableAbsente, "'" + chemin_ + "' ('" + vue_ + "' n'y est pas une table)", où);
  }
  const char* const motif = rc == SQLITE_INTERRUPT ? MotifDArrêt() : nullptr;
  const std::string texte = motif != nullptr ? motif : sqlite3_errmsg(base_.get());
  Refuse(NuméroDuCode(rc, texte), "'" + chemin_ + "' (" + texte + ")", où);
}

InstructionSqlite::InstructionSqlite(const ConnexionSqlite& connexion, std::string_view sql,
                                     std::source_location où)
    : connexion_(connexion) {
  connexion.ExigeDePoursuivre(où);
  sqlite3_stmt* instruction = nullptr;
  const char* reste = nullptr;
  const int rc = sqlite3_prepare_v2(connexion.Brut(), sql.data(), static_cast<int>(sql.size()),
                                    &instruction, &reste);
  instruction_.reset(instruction);
  if (rc != SQLITE_OK) connexion.Echoue(rc, où);
  const std::string_view suite(reste, static_cast<std::size_t>(sql.data() + sql.size() - reste));
  if (instruction == nullptr || !SansBlancs(suite).empty()) {
    Refuse(Numéro::InstructionRefusée, "une instruction et une seule", où);
  }
}

bool InstructionSqlite::Suivante(std::source_location où) {
  const int rc = sqlite3_step(instruction_.get());
  if (rc == SQLITE_ROW) return true;
  if (rc != SQLITE_DONE) connexion_.Echoue(rc, où);
  return false;
}

void InstructionSqlite::Lie(int rang, const Valeur& valeur, std::source_location où) {
  struct Liaison {
    sqlite3_stmt* instruction;
    int rang;
    int operator()(Nul) const { return sqlite3_bind_null(instruction, rang); }
    int operator()(bool b) const { return sqlite3_bind_int(instruction, rang, b ? kVrai : 0); }
    int operator()(std::int32_t n) const { return sqlite3_bind_int(instruction, rang, n); }
    int operator()(double d) const { return sqlite3_bind_double(instruction, rang, d); }
    int operator()(const std::string& t) const {
      return sqlite3_bind_text64(instruction, rang, t.data(), t.size(), SQLITE_TRANSIENT,
                                 SQLITE_UTF8);
    }
  };
  const int rc = std::visit(Liaison{instruction_.get(), rang}, valeur);
  if (rc != SQLITE_OK) connexion_.Echoue(rc, où);
}

void InstructionSqlite::Recommence(std::span<const std::int64_t> nombres, std::source_location où) {
  // Its result is that of the last run, which has been told.
  static_cast<void>(sqlite3_reset(instruction_.get()));
  int rang = 0;
  for (const std::int64_t nombre : nombres) {
    const int rc = sqlite3_bind_int64(instruction_.get(), ++rang, nombre);
    if (rc != SQLITE_OK) connexion_.Echoue(rc, où);
  }
}

TransactionSqlite::~TransactionSqlite() {
  if (validée_) return;
  // Some failures have already undone the transaction: then there is nothing left to undo.
  sqlite3_exec(connexion_.Brut(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void TransactionSqlite::Valide() {
  connexion_.Exécute("COMMIT");
  validée_ = true;
}

void Refuse(Numéro numéro, std::string_view détail, std::source_location où) {
  throw Echec(numéro, DescriptionDEchec(numéro) + " : " + std::string(détail), où);
}

std::string NomSql(std::string_view nom) {
  std::string cité = "\"";
  for (const char c : nom) {
    if (c == '"') cité += '"';
    cité += c;
  }
  return cité += '"';
}

}  // namespace zuma::linux_
