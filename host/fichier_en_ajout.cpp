#include "host/fichier_en_ajout.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/configuration.h"

namespace zuma::host {
namespace {

constexpr mode_t kDroits = 0644;

std::string Refus(const std::string& nom, int erreur) {
  if (erreur == EEXIST) {
    return nom + " is there already and is not overwritten: give another name, or move it away";
  }
  return nom + " cannot be written: " + std::strerror(erreur);
}

}  // namespace

FichierEnAjout::FichierEnAjout(std::string nom)
    : nom_(std::move(nom)),
      descripteur_(
          ::open(nom_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, kDroits)) {
  if (descripteur_ < 0) throw MauvaisUsage(Refus(nom_, errno));
}

FichierEnAjout::~FichierEnAjout() {
  ::close(descripteur_);
  if (fin_ == 0 && !nom_.empty()) ::unlink(nom_.c_str());
}

int FichierEnAjout::Ajoute(std::string_view texte) {
  struct stat état{};
  if (::fstat(descripteur_, &état) == 0 && état.st_nlink == 0) return ENOENT;
  int erreur = coupé_ ? Ecrit("\n") : 0;
  if (erreur == 0) erreur = Ecrit(texte);
  if (erreur == 0) erreur = Pousse();
  if (erreur == 0) {
    fin_ += static_cast<long long>(texte.size() + (coupé_ ? 1 : 0));
    coupé_ = false;
  } else if (::ftruncate(descripteur_, fin_) != 0) {
    coupé_ = true;
  }
  return erreur;
}

int FichierEnAjout::Ecrit(std::string_view texte) const {
  while (!texte.empty()) {
    const ssize_t écrits = ::write(descripteur_, texte.data(), texte.size());
    if (écrits < 0 && errno != EINTR) return errno;
    if (écrits > 0) texte.remove_prefix(static_cast<std::size_t>(écrits));
  }
  return 0;
}

// A full network disk tells only here. What cannot be synchronised needs it not.
int FichierEnAjout::Pousse() const {
  if (::fdatasync(descripteur_) == 0 || errno == EINVAL || errno == ENOTSUP) return 0;
  return errno;
}

std::string PremierNomLibre(const std::string& dossier, const std::string& base,
                            std::initializer_list<std::string_view> fins) {
  const std::string premier = (std::filesystem::path(dossier) / base).string();
  std::string nom = premier;
  const auto pris = [&](std::string_view fin) {
    return std::filesystem::exists(std::filesystem::symlink_status(nom + std::string(fin)));
  };
  for (int numéro = 2; std::ranges::any_of(fins, pris); ++numéro) {
    nom = premier + "-" + std::to_string(numéro);
  }
  return nom;
}

}  // namespace zuma::host
