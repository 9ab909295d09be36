#include "platform/linux/registre_erreurs.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include "platform/linux/texte_ligne.h"

namespace zuma::linux_ {
namespace {

std::string TexteDeValeur(const Valeur& valeur) {
  if (EstNul(valeur)) return "Null";
  if (const auto* texte = std::get_if<std::string>(&valeur)) return '"' + *texte + '"';
  return VersTexte(valeur);
}

iovec Morceau(std::string_view texte) {
  // The system only reads from it.
  return {const_cast<char*>(texte.data()), texte.size()};
}

}  // namespace

RegistreErreurs::RegistreErreurs(RéglagesRegistre réglages) : réglages_(std::move(réglages)) {
  réglages_.entrées = std::max<std::size_t>(réglages_.entrées, 1);
  if (réglages_.fichier.empty()) return;
  ancien_ = réglages_.fichier;
  ancien_ += ".1";
  std::error_code erreur;  // told by the first entry that cannot be written
  std::filesystem::create_directories(réglages_.fichier.parent_path(), erreur);
}

void RegistreErreurs::AjouteErreur(std::string_view message,
                                   const TableVariables& variables) noexcept {
  ++total_;
  try {
    entrées_.push_back({réglages_.instant(), std::string(message), variables});
    if (entrées_.size() > réglages_.entrées) entrées_.pop_front();
    if (!réglages_.fichier.empty()) EcritFichier(Texte(entrées_.back()));
  } catch (...) {
    // No memory left, or a clock that fails: the message alone, as it came.
    if (!réglages_.fichier.empty()) EcritFichier(message);
  }
}

std::string RegistreErreurs::Texte(const Entrée& entrée) {
  std::string texte = entrée.instant + "  " + UneSeuleLigne(entrée.message);
  for (const auto& [nom, valeur] : entrée.variables) {
    if (EstNul(nom)) continue;  // row 0, and variables of an absent object
    texte += "\n    " + UneSeuleLigne(VersTexte(nom) + " = " + TexteDeValeur(valeur));
  }
  return texte;
}

void RegistreErreurs::EcritFichier(std::string_view texte) noexcept {
  const int fd = ::open(réglages_.fichier.c_str(),
                        O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644);
  if (fd < 0) {
    erreurFichier_ = errno;
    ++nonEcrites_;
    return;
  }
  const std::array<iovec, 2> morceaux{Morceau(texte), Morceau("\n")};
  const ssize_t écrits = ::writev(fd, morceaux.data(), static_cast<int>(morceaux.size()));
  const bool complets = écrits == static_cast<ssize_t>(texte.size() + 1);
  erreurFichier_ = complets ? 0 : écrits < 0 ? errno : ENOSPC;
  if (!complets) ++nonEcrites_;

  struct ::stat état{};
  const bool mesuré = ::fstat(fd, &état) == 0 && S_ISREG(état.st_mode);
  // A disk that filled in the middle of an entry: take the piece back, lest it cut a character
  // and run into the next entry.
  if (mesuré && !complets && écrits > 0) (void)!::ftruncate(fd, état.st_size - écrits);
  ::close(fd);
  if (mesuré && static_cast<std::uint64_t>(état.st_size) >= réglages_.tailleFichier) {
    std::rename(réglages_.fichier.c_str(), ancien_.c_str());
  }
}

}  // namespace zuma::linux_
