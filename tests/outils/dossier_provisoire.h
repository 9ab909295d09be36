#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>
#include <string>

namespace zuma::essai {

/// A folder of the test's own, removed with all it holds.
class DossierProvisoire {
 public:
  DossierProvisoire() {
    std::string modèle = (std::filesystem::temp_directory_path() / "zuma-XXXXXX").string();
    chemin_ = ::mkdtemp(modèle.data());
  }
  ~DossierProvisoire() {
    std::error_code ignorée;
    std::filesystem::remove_all(chemin_, ignorée);
  }
  DossierProvisoire(const DossierProvisoire&) = delete;
  DossierProvisoire& operator=(const DossierProvisoire&) = delete;

  [[nodiscard]] std::string Fichier(const std::string& nom) const {
    return (chemin_ / nom).string();
  }
  [[nodiscard]] const std::filesystem::path& Chemin() const { return chemin_; }

 private:
  std::filesystem::path chemin_;
};

/// Whole content of a file; empty when it is not there.
inline std::string Lit(const std::filesystem::path& fichier) {
  std::ifstream flux(fichier, std::ios::binary);
  return {std::istreambuf_iterator<char>(flux), {}};
}

}  // namespace zuma::essai
