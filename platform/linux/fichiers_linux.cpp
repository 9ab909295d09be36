#include "platform/linux/fichiers_linux.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "base/echec.h"
#include "platform/linux/texte_ligne.h"

namespace zuma::linux_ {
namespace {

namespace fs = std::filesystem;

constexpr char kFinDeLigne = '\n';

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

std::string EnTexte(std::span<const std::string> lignes) {
  std::string texte;
  for (const std::string& ligne : lignes) texte += UneSeuleLigne(ligne) + kFinDeLigne;
  return texte;
}

// What kept the text from being written whole; 0 when nothing did.
int Ecrit(int fd, std::string_view texte) {
  while (!texte.empty()) {
    const ssize_t écrits = ::write(fd, texte.data(), texte.size());
    if (écrits < 0 && errno == EINTR) continue;
    if (écrits < 0) return errno;
    if (écrits == 0) return ENOSPC;
    texte.remove_prefix(static_cast<std::size_t>(écrits));
  }
  return 0;
}

void Ajoute(const fs::path& réel, int drapeaux, std::string_view texte) {
  // Never waiting: the file may be a pipe that nobody reads.
  const int fd =
      ::open(réel.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | drapeaux, 0644);
  if (fd < 0) Refuse(réel, errno);
  const int erreur = Ecrit(fd, texte);
  // Some file systems tell only here that the disk is full.
  const int fermeture = ::close(fd) < 0 ? errno : 0;
  if (erreur != 0 || fermeture != 0) Refuse(réel, erreur != 0 ? erreur : fermeture);
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
  Ajoute(Réel(chemin), O_NOFOLLOW, UneSeuleLigne(ligne) + kFinDeLigne);
}

void FichiersLinux::AjouteBloc(std::string_view chemin, std::span<const std::string> lignes) {
  // The system would end the path there, and open another file than the one that was named.
  if (chemin.find('\0') != std::string_view::npos) Refuse(UneSeuleLigne(chemin), ENOENT);
  Ajoute(chemin, 0, EnTexte(lignes));
}

void FichiersLinux::EcritBloc(std::int16_t numéro, std::span<const std::string> lignes) {
  if (const int erreur = Ecrit(numéro, EnTexte(lignes)); erreur != 0) {
    throw Echec(erreur == EBADF ? Numéro::NuméroDeFichierIncorrect : Numéro::ErreurDeFichier,
                "Fichier n° " + std::to_string(numéro) + " : " + std::strerror(erreur));
  }
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
