#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/collaborateurs.h"

namespace zuma::linux_ {

/// The table of texts built into the program (data/traductions.tsv).
[[nodiscard]] std::string_view TraductionsIncluses() noexcept;

/// Translator over tables of texts: UTF-8, one line for each key, columns separated by tabs. The
/// first line that is not a comment (#) is the header: two columns for key and section, then the
/// languages by name. An empty cell is no translation. "\t", "\n" and "\\" are escapes.
class Traducteur final : public ZED_Traduction {
 public:
  /// A line that was not taken: its number from 1 (0 for the whole file) and why.
  struct Problème {
    std::size_t ligne = 0;  ///< from 1; 0 for the whole file
    std::string texte;      ///< why it was not taken
  };

  /// Starts with the built-in table, in its first language.
  Traducteur();

  /// Adds a table: its texts replace those of the same key, its new languages join the known
  /// ones. A damaged line is told and left out, the others are taken.
  [[nodiscard]] std::vector<Problème> AjouteTable(std::string_view table);
  /// The same from a file; one that cannot be read is told and changes nothing.
  [[nodiscard]] std::vector<Problème> AjouteFichier(const std::filesystem::path& fichier);

  [[nodiscard]] std::string LangueCourante() const override { return langues_[courante_]; }
  /// Fails with 5 on a language that is not known; the present one then stays.
  void LangueCourante(std::string langue) override;
  [[nodiscard]] std::vector<std::string> Langues() const override { return langues_; }
  [[nodiscard]] std::string Traduit(std::string_view clé, std::string_view défaut,
                                    std::string_view section) const override;

 private:
  using Textes = std::vector<std::string>;  // one for each language; may stop short
  using Section = std::map<std::string, Textes, std::less<>>;

  struct Lecture;
  [[nodiscard]] std::string LitEntête(const std::vector<std::string_view>& champs, Lecture& en);
  [[nodiscard]] std::string LitTextes(const std::vector<std::string_view>& champs, Lecture& en);
  [[nodiscard]] std::size_t RangDeLangue(const std::string& nom);

  std::vector<std::string> langues_;
  std::size_t courante_ = 0;
  std::map<std::string, Section, std::less<>> sections_;
};

}  // namespace zuma::linux_
