#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/base_de_donnees.h"
#include "platform/linux/connexion_sqlite.h"
#include "platform/linux/instructions_preparees.h"

namespace zuma::linux_ {

/// How a database file is opened and read.
struct RéglagesBase {
  bool lectureSeule = false;  ///< nothing is written
  /// How long an operation waits for another program that holds the file.
  std::chrono::milliseconds attenteVerrou{2000};
  BornesDeLecture bornes{};  ///< what a reading may cost
};

/// A configuration database in an SQLite file. Recordsets of it may outlive it.
class BaseSqlite : public BaseDeDonnées {
 public:
  /// Opens an existing file, see `ConnexionSqlite` for what fails. A file that its owner has made
  /// read-only opens for reading.
  explicit BaseSqlite(const std::string& chemin, RéglagesBase réglages = {});

  /// Opens a statement of the system's dialect; every type is served as a dynaset. Fails with 3078
  /// on a missing table or a view in its place, 3061 on a missing column, 3075 on any other
  /// statement refused (all that is not one selection is), 3260 on a locked file, 3343 on a damaged
  /// one, 3059 and 3035 when it takes longer or holds more than the bounds of a reading.
  [[nodiscard]] Ref<Recordset> OpenRecordset(std::string_view instruction,
                                             int type = kDynaset) override;
  /// One read transaction. Waits for a lock here, once: no statement in it has to any more. Large
  /// tables without an index are read from copies in memory.
  void DébuteLesLectures() override;
  void FinitLesLectures() noexcept override;
  /// Outside of a read transaction each statement locks the file anew.
  [[nodiscard]] bool LecturesACommencer() const noexcept override { return !lectures_; }

  /// Something about the file itself.
  struct Problème {
    std::string texte;    ///< what is wrong, French
    bool certain = true;  ///< false: the file was not looked at to its end
  };
  /// What is wrong with the file itself, empty when it is sound: damage, references to rows that
  /// are gone, and what no database of this system has (triggers, views, virtual tables). Reads the
  /// whole file, as far as the bounds of a reading allow.
  [[nodiscard]] std::vector<Problème> ProblèmesDIntégrité() const;

 private:
  // What lives from `DébuteLesLectures` to `FinitLesLectures`.
  struct Lectures {
    explicit Lectures(ConnexionSqlite& connexion) : borne(connexion) {}
    ConnexionSqlite::LectureBornée borne;
    InstructionsPréparées instructions;
  };

  std::shared_ptr<ConnexionSqlite> connexion_;
  std::optional<Lectures> lectures_;
};

}  // namespace zuma::linux_
