#include "platform/linux/colonnes_sqlite.h"

namespace zuma::linux_ {
namespace {

std::string OuVide(const char* texte) {
  return texte == nullptr ? std::string() : std::string(texte);
}

}  // namespace

ColonnesSqlite::ColonnesSqlite(sqlite3_stmt* instruction) {
  const int nombre = sqlite3_column_count(instruction);
  colonnes_.reserve(static_cast<std::size_t>(nombre));
  for (int i = 0; i < nombre; ++i) {
    colonnes_.push_back({OuVide(sqlite3_column_name(instruction, i)),
                         OuVide(sqlite3_column_origin_name(instruction, i)),
                         OuVide(sqlite3_column_table_name(instruction, i)),
                         TypeDéclaré(OuVide(sqlite3_column_decltype(instruction, i)))});
  }
  // Columns of one name: the first counts.
  for (std::size_t rang = 0; rang < colonnes_.size(); ++rang) {
    rangs_.try_emplace(colonnes_[rang].nom, rang);
  }
}

std::optional<std::size_t> ColonnesSqlite::RangDe(std::string_view nom) const {
  const auto rang = rangs_.find(nom);
  if (rang == rangs_.end()) return {};
  return rang->second;
}

}  // namespace zuma::linux_
