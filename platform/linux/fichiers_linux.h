#pragma once

#include <filesystem>
#include <utility>

#include "platform/services.h"

namespace zuma::linux_ {

/// Text files of the installation, kept under one folder of the host: "c:\K9\a.txt" is
/// `racine`/c/K9/a.txt. No path of the installation leads out of that folder; those that the host
/// names are its own and taken as they stand. In every file lines end with a line feed, and control
/// characters within them become spaces.
class FichiersLinux final : public Fichiers {
 public:
  /// Paths of the installation lie under `racine`, which need not exist.
  explicit FichiersLinux(std::filesystem::path racine) : racine_(std::move(racine)) {}

  /// Folders are not created here (see `CréeDossier`). Fails with 76 on a missing folder or a path
  /// that climbs out with
  /// "..", with 75 on anything else the system refuses, with the real path and the reason.
  void AjouteLigne(std::string_view chemin, std::string_view ligne) override;
  void Supprime(std::string_view chemin) noexcept override;
  /// `chemin` may be relative to the working folder, and a link is followed. Never waits: a pipe
  /// that nobody reads, or that is full, fails (75).
  void AjouteBloc(std::string_view chemin, std::span<const std::string> lignes) override;
  /// `numéro` is a file descriptor.
  void EcritBloc(std::int16_t numéro, std::span<const std::string> lignes) override;

  /// Creates the folder of a file, with its parents; fails with 75.
  void CréeDossier(std::string_view chemin) const;
  /// The real file of a path of the installation.
  [[nodiscard]] std::filesystem::path Réel(std::string_view chemin) const;

 private:
  std::filesystem::path racine_;
};

}  // namespace zuma::linux_
