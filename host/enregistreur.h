#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "core/chassis.h"

namespace zuma::host {

/// Recording of the sensors: a CSV file in UTF-8 (header "name [unit]", decimal point, seconds from
/// the start, a missing reading empty and never 0) and beside it a JSON file that says what was
/// recorded. Lines gather in memory and are appended once a second, so that the pass is not held
/// up and a crash loses a second at most.
class Enregistreur {
 public:
  /// Creates both files; misuse when one cannot be. `spécimen`: texts for the JSON file.
  Enregistreur(const std::string& fichier, Chassis& chassis,
               const std::vector<std::pair<std::string, std::string>>& spécimen);
  /// Appends what is left.
  ~Enregistreur();
  Enregistreur(const Enregistreur&) = delete;
  Enregistreur& operator=(const Enregistreur&) = delete;

  /// One line, `secondes` after the start.
  void Note(double secondes);
  /// Lines noted, and whether all of them reached the file.
  [[nodiscard]] std::size_t Lignes() const { return lignes_; }
  [[nodiscard]] bool Complet() const { return complet_; }

 private:
  void Ecrit();

  struct Ferme {
    void operator()(std::FILE* f) const { std::fclose(f); }
  };
  std::unique_ptr<std::FILE, Ferme> fichier_;
  std::vector<CapteurRef> capteurs_;
  std::string tampon_;
  double dernièreEcriture_ = 0;
  std::size_t lignes_ = 0;
  bool complet_ = true;
};

}  // namespace zuma::host
