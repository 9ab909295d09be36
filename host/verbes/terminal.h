#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zuma::host {

/// What a text means to its reader; settles its colour.
enum class Ton { Normal, Titre, Bon, Attention, Danger, Discret };

/// Standard output as a person or a program sees it: colours on a terminal that wants them (the
/// NO_COLOR convention is honoured), plain text elsewhere.
class Terminal {
 public:
  Terminal();
  /// Plain text, whatever the output is.
  explicit Terminal(bool terminal) : terminal_(terminal), couleurs_(terminal) {}
  [[nodiscard]] bool EstTerminal() const { return terminal_; }
  /// Columns of the terminal; 80 where there is none.
  [[nodiscard]] std::size_t Colonnes() const;
  /// Lines of the terminal; 24 where there is none.
  [[nodiscard]] std::size_t Lignes() const;
  /// `texte` with the colour of `ton`, or as it stands.
  [[nodiscard]] std::string Colore(std::string_view texte, Ton ton) const;
  /// Shows the lines in place of the ones shown before; on a pipe they follow one another.
  void Montre(const std::vector<std::string>& lignes);

 private:
  bool terminal_;
  bool couleurs_;
};

/// Width on screen of a UTF-8 text without colours, one column a character.
[[nodiscard]] std::size_t Largeur(std::string_view texte);
/// `texte`, as text alone, filled with blanks on the right, or cut, to `colonnes`.
[[nodiscard]] std::string AGauche(std::string_view texte, std::size_t colonnes);
/// `texte` filled with blanks on the left to `colonnes`.
[[nodiscard]] std::string ADroite(std::string_view texte, std::size_t colonnes);

}  // namespace zuma::host
