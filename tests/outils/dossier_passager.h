#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace zuma::essai {

/// Folder of its own that goes away with the test.
struct DossierPassager {
  DossierPassager() {
    std::string modèle = (std::filesystem::temp_directory_path() / "zuma-XXXXXX").string();
    if (::mkdtemp(modèle.data()) == nullptr) throw std::runtime_error("mkdtemp");
    chemin = modèle;
  }
  ~DossierPassager() {
    std::error_code erreur;
    std::filesystem::remove_all(chemin, erreur);
  }
  DossierPassager(const DossierPassager&) = delete;
  DossierPassager& operator=(const DossierPassager&) = delete;

  std::filesystem::path chemin;
};

/// Whole content of a file; empty when it is not there.
inline std::string Lit(const std::filesystem::path& fichier) {
  std::ifstream flux(fichier, std::ios::binary);
  return {std::istreambuf_iterator<char>(flux), {}};
}

}  // namespace zuma::essai
