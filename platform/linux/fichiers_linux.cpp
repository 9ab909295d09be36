#include "platform/linux/fichiers_linux.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "core/echec.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::linux_ {
namespace {

namespace fs = std::filesystem;

// "c:" as the folder "c": two drives stay apart.
std::string Partie(std::string_view partie) {
  if (partie.size() == 2 && partie[1] == ':') {
    const char lettre = partie[0];
    const bool majuscule = lettre >= 'A' && lettre <= 'Z';
    return {majuscule ? static_cast<char>(lettre + ('a' - 'A')) : lettre};
  }
  return std::string(partie);
}

[[noreturn]] void Refuse(const fs::path& réel, int erreur) {
  throw Echec(erreur == ENOENT ? Numéro::CheminIntrouvable : Numéro::ErreurDeFichier,
              "Fichier '" + réel.string() + "' : " + std::strerror(erreur));
}

}  // namespace

fs::path FichiersLinux::Réel(std::string_view chemin) const {
  fs::path réel = racine_;
  std::string_view reste = chemin;
  while (!reste.empty()) {
    const std::size_t fin = std::min(reste.find_first_of("\\/"), reste.size());
    const std::string_view partie = reste.substr(0, fin);
    if (partie == ".." || partie.find('\0') != std::string_view::npos) {
      throw Echec(Numéro::CheminIntrouvable,
                  "Chemin '" + UneSeuleLigne(chemin) + "' refusé : il sort de l'installation");
    }
    if (!partie.empty() && partie != ".") réel /= Partie(partie);
    reste.remove_prefix(std::min(fin + 1, reste.size()));
  }
  return réel;
}

void FichiersLinux::AjouteLigne(std::string_view chemin, std::string_view ligne) {
  const fs::path réel = Réel(chemin);
  const std::string texte = UneSeuleLigne(ligne) + "\n";
  // Never waiting: the file may be a pipe that nobody reads.
  const int fd = ::open(réel.c_str(),
                        O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0644);
  if (fd < 0) Refuse(réel, errno);
  const ssize_t écrits = ::write(fd, texte.data(), texte.size());
  const int erreur = écrits < 0 ? errno : ENOSPC;
  ::close(fd);
  if (écrits != static_cast<ssize_t>(texte.size())) Refuse(réel, erreur);
}

void FichiersLinux::Supprime(std::string_view chemin) noexcept {
  try {
    const fs::path réel = Réel(chemin);
    // A plain file only: an empty path names the whole installation.
    if (fs::is_regular_file(fs::symlink_status(réel))) fs::remove(réel);
  } catch (const std::exception&) {
    return;  // by contract: what cannot be deleted stays
  }
}

void FichiersLinux::CréeDossier(std::string_view chemin) const {
  const fs::path dossier = Réel(chemin).parent_path();
  std::error_code erreur;
  fs::create_directories(dossier, erreur);
  if (erreur) Refuse(dossier, erreur.value());
}

}  // namespace zuma::linux_
