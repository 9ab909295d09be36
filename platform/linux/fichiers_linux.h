#pragma once

#include <filesystem>
#include <utility>

#include "platform/services.h"

namespace zuma::linux_ {

/// Text files of the installation, kept under one folder of the host: "c:\K9\a.txt" is
/// `racine`/c/K9/a.txt. No path leads out of that folder.
class FichiersLinux final : public Fichiers {
 public:
  explicit FichiersLinux(std::filesystem::path racine) : racine_(std::move(racine)) {}

  /// Line ends with a line feed; control characters in it become spaces. Folders are not created
  /// here (see `CréeDossier`). Fails with 76 on a missing folder or a path that climbs out with
  /// "..", with 75 on anything else the system refuses, with the real path and the reason.
  void AjouteLigne(std::string_view chemin, std::string_view ligne) override;
  void Supprime(std::string_view chemin) noexcept override;

  /// Creates the folder of a file, with its parents; fails with 75.
  void CréeDossier(std::string_view chemin) const;
  /// The real file of a path of the installation.
  [[nodiscard]] std::filesystem::path Réel(std::string_view chemin) const;

 private:
  std::filesystem::path racine_;
};

}  // namespace zuma::linux_
