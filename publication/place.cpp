#include "publication/place.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/empreinte.h"

namespace zuma::publication {
namespace {

constexpr mode_t kDroits = 0640;

// A lock that belongs to the open file: it ends with the process, whatever ends that.
bool Verrouille(int descripteur) {
  struct flock verrou{};
  verrou.l_type = F_WRLCK;
  verrou.l_whence = SEEK_SET;
  if (::fcntl(descripteur, F_OFD_SETLK, &verrou) == 0) return true;
  if (errno == EAGAIN || errno == EACCES) return false;
  throw std::system_error(errno, std::generic_category(), "lock");
}

int Ouvre(const std::string& fichier, int drapeaux) {
  const int descripteur =
      ::open(fichier.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | drapeaux, kDroits);
  if (descripteur < 0) throw std::system_error(errno, std::generic_category(), fichier);
  return descripteur;
}

bool EstToujoursLà(int descripteur, const std::string& fichier) {
  struct stat ouvert{}, nommé{};
  return ::fstat(descripteur, &ouvert) == 0 && ::lstat(fichier.c_str(), &nommé) == 0 &&
         ouvert.st_ino == nommé.st_ino && ouvert.st_dev == nommé.st_dev;
}

bool EstVide(int descripteur) {
  struct stat état{};
  return ::fstat(descripteur, &état) == 0 && état.st_size == 0;
}

off_t Octet(EnTête champ) {
  return static_cast<off_t>(RangDe(champ) * sizeof(std::uint64_t));
}

std::uint64_t MotDuFichier(int descripteur, EnTête champ) {
  std::uint64_t mot = 0;
  return ::pread(descripteur, &mot, sizeof mot, Octet(champ)) == sizeof mot ? mot : 0;
}

// Before there is a map: who comes second is told by whom the frame is run.
void EcritLeProcessus(int descripteur) {
  const auto pid = static_cast<std::uint64_t>(::getpid());
  if (::pwrite(descripteur, &pid, sizeof pid, Octet(EnTête::Processus)) != sizeof pid) {
    throw std::system_error(errno, std::generic_category(), "write");
  }
}

// What may stand in a file's name.
std::string Lisible(std::string texte) {
  std::ranges::replace_if(
      texte,
      [](unsigned char c) { return c < 0x80 && std::isalnum(c) == 0 && c != '_' && c != '.'; },
      '_');
  constexpr std::size_t kAuPlus = 60;
  return texte.substr(0, kAuPlus);
}

std::string Désignation(const Identité& identité) {
  return "frame " + std::to_string(identité.index) + " of " + identité.fichier;
}

}  // namespace

std::string NomDeFichier(const Identité& identité) {
  std::error_code erreur;
  std::filesystem::path chemin = std::filesystem::weakly_canonical(identité.fichier, erreur);
  if (erreur) chemin = identité.fichier;
  const std::uint64_t empreinte = [&] {
    Empreinte deTout;
    deTout.Ajoute(chemin.string());
    return deTout.Valeur();
  }();
  std::array<char, 16> chiffres{};
  const auto fin = std::to_chars(chiffres.data(), chiffres.data() + chiffres.size(),
                                 empreinte & 0xFFFF'FFFFU, 16);
  return "zuma-" + Lisible(chemin.stem()) + "-" + std::to_string(identité.index) +
         (identité.rejoué   ? "-replay-"
          : identité.simulé ? "-sim-"
                            : "-") +
         std::string(chiffres.data(), fin.ptr) + ".pub";
}

Place::Place(const Identité& identité, const std::string& dossier)
    : fichier_(dossier + "/" + NomDeFichier(identité)) {
  // Before the file, which another user's host may well keep from this one.
  if (!identité.simulé && !identité.rejoué) {
    machine_.emplace(NomDeFichier(identité));
    if (machine_->EstPrise()) throw DéjàEnMarche(Désignation(identité), machine_->Occupant());
  }
  try {
    Prend(identité);
  } catch (const std::system_error& échec) {
    DitLeDéfaut(échec.what());
  }
}

Place::~Place() {
  if (descripteur_ < 0) return;
  ::unlink(fichier_.c_str());
  ::close(descripteur_);
}

// Between two steps another host may do the same: whoever comes second begins again.
void Place::Prend(const Identité& identité) {
  constexpr int kEssais = 100;
  for (int essai = 0; essai < kEssais; ++essai) {
    if (Essaie(identité)) return;
  }
  throw std::system_error(EBUSY, std::generic_category(), fichier_);
}

bool Place::Essaie(const Identité& identité) {
  descripteur_ = Ouvre(fichier_, O_CREAT);
  const auto lâche = [this] {
    ::close(std::exchange(descripteur_, -1));
    return false;
  };
  try {
    if (!Verrouille(descripteur_)) {
      const auto pid = static_cast<int>(MotDuFichier(descripteur_, EnTête::Processus));
      lâche();
      throw DéjàEnMarche(Désignation(identité), pid);
    }
  } catch (const std::system_error&) {
    lâche();
    throw;
  }
  if (!EstToujoursLà(descripteur_, fichier_)) return lâche();
  if (EstVide(descripteur_)) {
    (void)::fchmod(descripteur_, kDroits);
    EcritLeProcessus(descripteur_);
    return true;
  }
  // The lock of the old file is held until its name is free. One without a map tells nothing.
  if (MotDuFichier(descripteur_, EnTête::Magie) == kMagie) {
    const std::string avant = fichier_ + ".before";
    if (::rename(fichier_.c_str(), avant.c_str()) == 0) miseDeCôté_ = avant;
  } else {
    ::unlink(fichier_.c_str());
  }
  return lâche();
}

// The lock is kept without a map, too: two hosts must not run one frame.
std::shared_ptr<Zone> Place::Réserve(std::size_t octets) {
  if (descripteur_ >= 0) {
    try {
      return Zone::DuFichier(descripteur_, octets);
    } catch (const std::system_error& échec) {
      if (::ftruncate(descripteur_, 0) == 0) EcritLeProcessus(descripteur_);
      DitLeDéfaut(échec.what());
    }
  }
  return Zone::Privée(octets);
}

std::string Place::Fichier() const {
  return défaut_.empty() ? fichier_ : std::string();
}

void Place::DitLeDéfaut(std::string_view pourquoi) {
  défaut_ = "the frame runs, but nobody can look at it: " + fichier_ + ": " + std::string(pourquoi);
}

}  // namespace zuma::publication
