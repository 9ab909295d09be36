#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zuma::host {

/// A new file that grows by whole texts: of one that fails, nothing stays.
class FichierEnAjout {
 public:
  /// Creates the file. Throws `MauvaisUsage` when it cannot be, above all when it exists: a
  /// recording is never written over, nor into.
  explicit FichierEnAjout(std::string nom);
  /// Takes over an open descriptor.
  explicit FichierEnAjout(int descripteur) : descripteur_(descripteur) {}
  /// Closes the file, and takes it away if nothing ever reached it.
  ~FichierEnAjout();
  FichierEnAjout(const FichierEnAjout&) = delete;
  FichierEnAjout& operator=(const FichierEnAjout&) = delete;

  /// Appends `texte` as far as the disk itself, and returns 0; or the error number, ENOENT for a
  /// file that was removed: what is written to such a one goes nowhere. Where the beginning of a
  /// failed text cannot be cut off again, a line end keeps the next text from joining it. May block
  /// as long as the disk does.
  [[nodiscard]] int Ajoute(std::string_view texte);

 private:
  [[nodiscard]] int Ecrit(std::string_view texte) const;
  [[nodiscard]] int Pousse() const;

  std::string nom_;
  int descripteur_ = -1;
  long long fin_ = 0;   ///< bytes that are there
  bool coupé_ = false;  ///< behind them stands the beginning of a text that failed
};

/// `dossier`/`base``fin`, or with -2, -3 and so on behind `base`: the first for which none of the
/// names with these endings is there.
[[nodiscard]] std::string PremierNomLibre(const std::string& dossier, const std::string& base,
                                          std::initializer_list<std::string_view> fins);

}  // namespace zuma::host
