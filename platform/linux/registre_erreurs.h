#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/collaborateurs.h"
#include "platform/linux/horloge_systeme.h"

namespace zuma::linux_ {

/// Where and how much an error record keeps.
struct RéglagesRegistre {
  std::filesystem::path fichier;                        ///< empty: in memory only
  std::size_t entrées = 1000;                           ///< kept in memory, at least 1
  std::uint64_t tailleFichier = 8ULL * 1024ULL * 1024;  ///< bytes before a new file is begun
  std::function<std::string()> instant = HorlogeSystème::TexteInstant;  ///< date and time
};

/// Error record that keeps the last entries and appends each to a file, readable as it stands:
///
///     2024-05-03 14:03:22  Erreur N°91 (Objet absent) à la ligne ...
///         Variable musrEtat = 3
///
/// It never fails and never waits: with a full disk, a missing folder or no memory left it keeps
/// what it can and counts the rest. The file is opened for each entry, so it heals by itself when
/// the disk comes back. A full file becomes "<file>.1", which replaces the one before: a board
/// that fails on every pass cannot fill the disk.
class RegistreErreurs final : public ZED_Erreur {
 public:
  /// One entry as it was received.
  struct Entrée {
    std::string instant;       ///< local date and time
    std::string message;       ///< what failed, as it was told
    TableVariables variables;  ///< row 0 is empty
  };

  /// An empty record; an entry file that is there is gone on with.
  explicit RegistreErreurs(RéglagesRegistre réglages);

  void AjouteErreur(std::string_view message, const TableVariables& variables) noexcept override;

  /// The last entries, oldest first.
  [[nodiscard]] const std::deque<Entrée>& Entrées() const noexcept { return entrées_; }
  /// Every entry received, those no longer kept included.
  [[nodiscard]] std::uint64_t Total() const noexcept { return total_; }
  /// Entries that did not reach the file; 0 without a file.
  [[nodiscard]] std::uint64_t NonEcrites() const noexcept { return nonEcrites_; }
  /// The system's number (`errno`) of the last failure of the file; 0 while all goes well.
  [[nodiscard]] int ErreurDuFichier() const noexcept { return erreurFichier_; }
  /// Forgets the entries in memory; the file stays.
  void Vide() noexcept { entrées_.clear(); }

  /// An entry as it stands in the file.
  [[nodiscard]] static std::string Texte(const Entrée& entrée);

 private:
  void EcritFichier(std::string_view texte) noexcept;

  RéglagesRegistre réglages_;
  std::filesystem::path ancien_;  // named once: no allocation when memory has run out
  std::deque<Entrée> entrées_;
  std::uint64_t total_ = 0;
  std::uint64_t nonEcrites_ = 0;
  int erreurFichier_ = 0;
};

}  // namespace zuma::linux_
