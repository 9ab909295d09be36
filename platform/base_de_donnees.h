#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <source_location>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/ref.h"
#include "base/valeur.h"
#include "platform/nom_de_colonne.h"

namespace zuma {

/// One field of the current record.
struct Champ {
  /// Name of the column, as the statement gives it.
  NomDeColonne Name;
  /// Its value in this record.
  Valeur Value;
};

/// Rows of a statement, walked from the first to the end (`EOF` of the interface is `FinDeTable`
/// here: the C library owns the other name as a macro).
class Recordset {
 public:
  virtual ~Recordset() = default;

  /// Number of rows; 0 is an empty recordset, never a failure.
  [[nodiscard]] virtual std::int32_t RecordCount() const = 0;
  /// Fails with 3021 on an empty recordset.
  virtual void MoveFirst() = 0;
  /// One row on, behind the last one to the end; fails with 3021 at the end.
  virtual void MoveNext() = 0;
  /// True behind the last row, and on an empty recordset.
  [[nodiscard]] virtual bool FinDeTable() const = 0;
  /// Fields of the current record in column order; fails with 3021 when there is none.
  [[nodiscard]] virtual std::span<const Champ> Fields() const = 0;
  /// Place among `Fields` of the first column of exactly that name, or none. Here each name is
  /// looked at; a recordset that knows its columns should answer at once.
  [[nodiscard]] virtual std::optional<std::size_t> RangDe(std::string_view colonne) const;

  /// Opens the current record for writing; fails with 3021 when there is none, with 3027 on a
  /// database
  /// that can only be read.
  virtual void Edit() = 0;
  /// Sets a field of the record opened by `Edit`, its name in whatever case; a missing column fails
  /// with 3265, a record that is not open with 3020.
  virtual void Ecrit(std::string_view colonne, Valeur valeur) = 0;
  /// Saves the record in one transaction, to the row of its "Index", if that still holds what was
  /// read: a row that somebody else has changed fails with 3197. A failure leaves the old row.
  virtual void Update() = 0;
};

/// The host's database.
class BaseDeDonnées {
 public:
  /// The only kind of recordset that the library opens.
  static constexpr int kDynaset = 2;

  virtual ~BaseDeDonnées() = default;
  /// Rows of a statement of `base/requetes.h`, as they stand now. A missing table fails with 3078,
  /// a
  /// missing column with 3061, a statement that is refused with 3075, a database that is locked
  /// with 3260.
  [[nodiscard]] virtual Ref<Recordset> OpenRecordset(std::string_view instruction,
                                                     int type = kDynaset) = 0;

  /// From here on all statements see the database as it stands now, whatever others write
  /// meanwhile, up to `FinitLesLectures`. Not nested, and nothing is written between the two. Fails
  /// with 3260 when another program keeps the database locked. A database that nobody else writes
  /// needs neither of the two. See `LecturesCohérentes`.
  virtual void DébuteLesLectures() {}
  /// Ends what `DébuteLesLectures` began.
  virtual void FinitLesLectures() noexcept {}
  /// True when a load whose host has not begun the reads is to begin them itself.
  [[nodiscard]] virtual bool LecturesACommencer() const noexcept { return false; }
};

/// Reads that no writer splits, for as long as this lives: load and link of a frame belong into
/// one, so that a sensor never has its channel of before and its limits of after a change. It must
/// end before the frame starts: others may be unable to save meanwhile.
class LecturesCohérentes {
 public:
  /// Begins the reads, at once; fails like `DébuteLesLectures`.
  explicit LecturesCohérentes(Ref<BaseDeDonnées> base) : base_(std::move(base)) {
    base_->DébuteLesLectures();
  }
  ~LecturesCohérentes() { base_->FinitLesLectures(); }
  LecturesCohérentes(const LecturesCohérentes&) = delete;
  LecturesCohérentes& operator=(const LecturesCohérentes&) = delete;

 private:
  Ref<BaseDeDonnées> base_;
};

/// Direct read: the field of that name, in whatever case; a missing column fails with 3265.
[[nodiscard]] const Valeur& LitChamp(const Recordset& lignes, std::string_view colonne,
                                     std::source_location où = std::source_location::current());

/// The same, or none when the column is missing. The pointer holds until the recordset moves.
[[nodiscard]] const Valeur* ChampNommé(const Recordset& lignes, std::string_view colonne);

/// Walk: the value of the field whose name is exactly `colonne`, or none when the column is
/// missing. The pointer holds until the recordset moves.
[[nodiscard]] const Valeur* ChercheChamp(const Recordset& lignes, std::string_view colonne);

}  // namespace zuma
