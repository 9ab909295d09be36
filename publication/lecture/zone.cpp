#include "publication/lecture/zone.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zuma::publication {
namespace {

[[noreturn]] void Echoue(int erreur, const char* quoi) {
  throw std::system_error(erreur, std::generic_category(), quoi);
}

class Ouvert {
 public:
  explicit Ouvert(const std::string& fichier)
      : descripteur_(::open(fichier.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  ~Ouvert() {
    if (descripteur_ >= 0) ::close(descripteur_);
  }
  Ouvert(const Ouvert&) = delete;
  Ouvert& operator=(const Ouvert&) = delete;
  [[nodiscard]] int Descripteur() const { return descripteur_; }
  [[nodiscard]] int Cède() { return std::exchange(descripteur_, -1); }

 private:
  int descripteur_;
};

// A part of a publication lies inside it, and its size does not run over.
bool TientDans(std::size_t total, std::uint64_t début, std::uint64_t places, std::uint64_t mots) {
  return début >= kMotsDEnTête && début <= total && mots != 0 && places != 0 &&
         places <= (total - début) / mots;
}

void Vérifie(const std::string& fichier, std::span<const Mot> mots) {
  const auto refuse = [&](const char* pourquoi) { throw Illisible(fichier + " " + pourquoi); };
  if (Lit(mots, EnTête::Magie) != kMagie) refuse("is no publication of a frame");
  if (Lit(mots, EnTête::Ordre) != kOrdre) refuse("comes from a machine of another byte order");
  if (Lit(mots, EnTête::Version) != kVersion) {
    refuse("has another layout: look at it with the version of the program that ran the frame");
  }
  const bool entière =
      Lit(mots, EnTête::Taille) <= mots.size() &&
      TientDans(mots.size(), Lit(mots, EnTête::Description), Lit(mots, EnTête::DescriptionPlaces),
                1) &&
      Lit(mots, EnTête::DescriptionOctets) <=
          Lit(mots, EnTête::DescriptionPlaces) * sizeof(std::uint64_t) &&
      TientDans(mots.size(), Lit(mots, EnTête::Echantillons), Lit(mots, EnTête::EchantillonsPlaces),
                Lit(mots, EnTête::EchantillonMots)) &&
      Lit(mots, EnTête::EchantillonMots) >= RangDe(MotDEchantillon::kNombre) &&
      TientDans(mots.size(), Lit(mots, EnTête::Evènements), Lit(mots, EnTête::EvènementsPlaces),
                kMotsDEvènement);
  if (!entière) refuse("is damaged or cut short");
}

}  // namespace

Zone::Zone(int descripteur, std::size_t octets, int protection, int drapeaux)
    : nombre_(octets / sizeof(Mot)) {
  void* mémoire = ::mmap(nullptr, octets, protection, drapeaux, descripteur, 0);
  if (mémoire == MAP_FAILED) Echoue(errno, "mmap");
  mots_ = static_cast<Mot*>(mémoire);
}

Zone::~Zone() {
  ::munmap(mots_, nombre_ * sizeof(Mot));
  if (descripteur_ >= 0) ::close(descripteur_);
}

bool Zone::EstTenue() const {
  return descripteur_ < 0 || EstVerrouillé(descripteur_);
}

bool EstVerrouillé(int descripteur) {
  struct flock verrou{};
  verrou.l_type = F_RDLCK;
  verrou.l_whence = SEEK_SET;
  return ::fcntl(descripteur, F_OFD_GETLK, &verrou) == 0 && verrou.l_type != F_UNLCK;
}

// The first write to a page takes microseconds, populated or not: no pass shall pay for it.
void Zone::TouchePartout() {
  constexpr auto kVite = std::memory_order_relaxed;
  std::ranges::for_each(Mots(), [](Mot& mot) { mot.store(mot.load(kVite), kVite); });
}

std::shared_ptr<Zone> Zone::DuFichier(int descripteur, std::size_t octets) {
  if (const int erreur = ::posix_fallocate(descripteur, 0, static_cast<off_t>(octets))) {
    Echoue(erreur, "posix_fallocate");
  }
  std::shared_ptr<Zone> zone(
      new Zone(descripteur, octets, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE));
  zone->TouchePartout();
  (void)::mlock(zone->mots_, octets);  // where the limits allow it
  return zone;
}

std::shared_ptr<Zone> Zone::Privée(std::size_t octets) {
  std::shared_ptr<Zone> zone(
      new Zone(-1, octets, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE));
  zone->TouchePartout();
  return zone;
}

std::shared_ptr<const Zone> Zone::EnLecture(const std::string& fichier) {
  Ouvert ouvert(fichier);
  struct stat état{};
  if (ouvert.Descripteur() < 0 || ::fstat(ouvert.Descripteur(), &état) != 0) {
    throw Illisible(fichier + ": " + std::strerror(errno));
  }
  const auto octets = static_cast<std::size_t>(état.st_size) / sizeof(Mot) * sizeof(Mot);
  if (!S_ISREG(état.st_mode) || octets < kMotsDEnTête * sizeof(Mot)) {
    throw Illisible(fichier + " is no publication of a frame");
  }
  try {
    std::shared_ptr<Zone> zone(new Zone(ouvert.Descripteur(), octets, PROT_READ, MAP_SHARED));
    Vérifie(fichier, std::as_const(*zone).Mots());
    zone->descripteur_ = ouvert.Cède();
    return zone;
  } catch (const std::system_error& échec) {
    throw Illisible(fichier + ": " + échec.what());
  }
}

}  // namespace zuma::publication
