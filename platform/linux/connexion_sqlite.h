#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <source_location>
#include <span>
#include <string>
#include <string_view>

#include <sqlite3.h>

#include "base/echec.h"
#include "base/valeur.h"

namespace zuma::linux_ {

/// How a file is opened. `Création` is for an empty file that is about to be filled.
enum class Accès { Lecture, Ecriture, Création };

/// What a reading may cost: nobody vouches that what a file asks of its reader ever ends.
struct BornesDeLecture {
  /// Time of the processor for one statement, or for all those between `DébuteLesLectures` and
  /// `FinitLesLectures`. What others take of a busy machine does not count.
  std::chrono::milliseconds durée{3000};
  /// Memory for the rows of one recordset, in bytes.
  std::size_t mémoire = std::size_t{256} << 20;
  /// True once the program is asked to end; asked about every millisecond. None: never.
  bool (*interrompue)() = nullptr;
};

/// An open SQLite file. It lives as long as the base or any recordset of it does. One thread at a
/// time uses it, or them.
///
/// The file is not trusted: opened with the defensive flag, an untrusted schema, no extensions and
/// no triggers, so that nothing in it runs or changes what is written, and no view is read: a table
/// of the system is a table. Every commit reaches the disk (`synchronous=FULL`).
class ConnexionSqlite {
 public:
  /// Opens an existing file and reads its schema; fails with 53 when there is no such file, 3343
  /// when it is no database, 3260 when another program holds it for longer than `attente`. What a
  /// save that was cut short left is put right first, for reading too; where that cannot be, the
  /// failure says so.
  ConnexionSqlite(const std::string& chemin, Accès accès, std::chrono::milliseconds attente,
                  const BornesDeLecture& bornes = {});
  ConnexionSqlite(const ConnexionSqlite&) = delete;
  ConnexionSqlite& operator=(const ConnexionSqlite&) = delete;

  /// While one lives, statements end with 3059 once their time is over or the program is asked to
  /// end. The outermost one counts. A save is no reading: it is never given up half-way.
  class LectureBornée {
   public:
    /// Begins the time of a reading on that file.
    explicit LectureBornée(ConnexionSqlite& connexion);
    ~LectureBornée();
    LectureBornée(const LectureBornée&) = delete;
    LectureBornée& operator=(const LectureBornée&) = delete;

   private:
    ConnexionSqlite& connexion_;
    bool première_;
  };

  /// The handle of the C library; it belongs to this.
  [[nodiscard]] sqlite3* Brut() const noexcept { return base_.get(); }
  /// What a reading may cost.
  [[nodiscard]] const BornesDeLecture& Bornes() const noexcept { return bornes_; }
  /// Fails with 3059 when a bounded reading is to go no further.
  void ExigeDePoursuivre(std::source_location où = std::source_location::current()) const;
  /// True once a bounded reading has been found to go no further: without a look at the clock.
  [[nodiscard]] bool Arrêtée() const noexcept { return motif_ != nullptr; }
  /// Path of the file.
  [[nodiscard]] const std::string& Chemin() const noexcept { return chemin_; }
  /// True when the file itself, or the way it was opened, admits no writing.
  [[nodiscard]] bool EnLectureSeule() const noexcept;
  /// Runs a statement without parameters or result.
  void Exécute(const char* sql, std::source_location où = std::source_location::current());
  /// Throws the failure of the result code `rc` of a call on this file.
  [[noreturn]] void Echoue(int rc, std::source_location où = std::source_location::current()) const;

 private:
  struct Ferme {
    void operator()(sqlite3* base) const noexcept { sqlite3_close_v2(base); }
  };
  void Ouvre(int mode, std::chrono::milliseconds attente);
  void Rétablit(std::chrono::milliseconds attente);
  void Protège();
  [[nodiscard]] const char* MotifDArrêt() const noexcept;
  static int Surveille(void* connexion) noexcept;
  static int Autorise(void* connexion, int action, const char*, const char*, const char*,
                      const char* vue) noexcept;

  std::string chemin_;
  BornesDeLecture bornes_;
  std::optional<std::chrono::nanoseconds> échéance_;  // by the thread's own clock
  mutable const char* motif_ = nullptr;               // why a bounded reading ended, once found
  std::string vue_;                                   // the view that a statement was refused for
  std::unique_ptr<sqlite3, Ferme> base_;
};

/// One statement, finalised at its end so that it never keeps the file locked.
class InstructionSqlite {
 public:
  /// Fails with 3078 on a missing table, 3061 on a missing column, 3075 on anything else that the
  /// database refuses.
  InstructionSqlite(const ConnexionSqlite& connexion, std::string_view sql,
                    std::source_location où = std::source_location::current());

  /// The handle of the C library; it belongs to this.
  [[nodiscard]] sqlite3_stmt* Brut() const noexcept { return instruction_.get(); }
  /// Next row; false at the end.
  [[nodiscard]] bool Suivante(std::source_location où = std::source_location::current());
  /// Binds parameter `rang`, counted from 1.
  void Lie(int rang, const Valeur& valeur,
           std::source_location où = std::source_location::current());
  /// Runs from the first row again, with the numbers as its first parameters.
  void Recommence(std::span<const std::int64_t> nombres,
                  std::source_location où = std::source_location::current());

 private:
  struct Finalise {
    void operator()(sqlite3_stmt* instruction) const noexcept { sqlite3_finalize(instruction); }
  };
  const ConnexionSqlite& connexion_;
  std::unique_ptr<sqlite3_stmt, Finalise> instruction_;
};

/// A write transaction: undone at its end unless `Valide` has returned.
class TransactionSqlite {
 public:
  /// Begins at once: fails with 3260 on a locked file, with 3027 on one that takes no writing.
  explicit TransactionSqlite(ConnexionSqlite& connexion) : connexion_(connexion) {
    connexion_.Exécute("BEGIN IMMEDIATE");
  }
  ~TransactionSqlite();
  TransactionSqlite(const TransactionSqlite&) = delete;
  TransactionSqlite& operator=(const TransactionSqlite&) = delete;

  /// Keeps what was written, on the disk; fails like any statement, and then nothing is kept.
  void Valide();

 private:
  ConnexionSqlite& connexion_;
  bool validée_ = false;
};

/// Throws that failure, its description followed by `détail`.
[[noreturn]] void Refuse(Numéro numéro, std::string_view détail,
                         std::source_location où = std::source_location::current());

/// A name of a table or column as SQLite takes it, whatever characters it holds.
[[nodiscard]] std::string NomSql(std::string_view nom);

}  // namespace zuma::linux_
