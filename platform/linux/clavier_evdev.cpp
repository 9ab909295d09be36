#include "platform/linux/clavier_evdev.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <libevdev/libevdev.h>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace zuma::linux_ {
namespace {

constexpr auto kEntreDeuxRecherches = std::chrono::seconds(1);
// A device that babbles must not hold the pass: the rest is read on the next one.
constexpr int kEvènementsParLecture = 256;

bool ADesTouches(const libevdev& appareil, DispositionClavier disposition) {
  for (unsigned code = 0; code < KEY_CNT; ++code) {
    if (ToucheVirtuelle(code, disposition) != 0 &&
        libevdev_has_event_code(&appareil, EV_KEY, code) == 1) {
      return true;
    }
  }
  return false;
}

}  // namespace

struct ClavierEvdev::Appareil {
  Appareil(std::string chemin_, int fd_) : chemin(std::move(chemin_)), fd(fd_) {
    if (fd >= 0 && libevdev_new_from_fd(fd, &evdev) < 0) evdev = nullptr;
  }
  ~Appareil() {
    libevdev_free(evdev);
    if (fd >= 0) close(fd);
  }
  Appareil(const Appareil&) = delete;
  Appareil& operator=(const Appareil&) = delete;

  std::string chemin;
  int fd;
  libevdev* evdev = nullptr;
  unsigned lecture = LIBEVDEV_READ_FLAG_NORMAL;
};

ClavierEvdev::ClavierEvdev(DispositionClavier disposition, std::string dossier)
    : dossier_(std::move(dossier)), touches_(disposition) {}

ClavierEvdev::~ClavierEvdev() = default;

void ClavierEvdev::Cherche() {
  const auto maintenant = std::chrono::steady_clock::now();
  if (appareils_.size() >= attendus_ || maintenant < prochaineRecherche_) return;
  prochaineRecherche_ = maintenant + kEntreDeuxRecherches;
  std::error_code erreur;
  for (std::filesystem::directory_iterator i(dossier_, erreur), fin; !erreur && i != fin;
       i.increment(erreur)) {
    if (i->path().filename().string().starts_with("event")) Ouvre(i->path().string());
  }
  attendus_ = std::max(attendus_, appareils_.size());
}

void ClavierEvdev::Ouvre(const std::string& chemin) {
  const auto déjàLà = [&](const auto& appareil) { return appareil->chemin == chemin; };
  if (std::ranges::any_of(appareils_, déjàLà)) return;
  auto appareil =
      std::make_unique<Appareil>(chemin, open(chemin.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (appareil->evdev == nullptr || !ADesTouches(*appareil->evdev, touches_.Disposition())) return;
  constexpr std::pair<unsigned, std::uint8_t> kVerrous[] = {{LED_CAPSL, touche::kVerrMaj},
                                                            {LED_NUML, touche::kVerrNum},
                                                            {LED_SCROLLL, touche::kArrêtDéfil}};
  for (const auto& [voyant, verrou] : kVerrous) {
    int allumé = 0;
    if (libevdev_fetch_event_value(appareil->evdev, EV_LED, voyant, &allumé) != 0) {
      touches_.Verrou(verrou, allumé != 0);
    }
  }
  for (unsigned code = 0; code < KEY_CNT; ++code) {
    if (libevdev_get_event_value(appareil->evdev, EV_KEY, code) != 0) touches_.Reçoit(code, 1);
  }
  appareils_.push_back(std::move(appareil));
}

const EtatClavier& ClavierEvdev::LitEtat() {
  Cherche();
  std::erase_if(appareils_, [&](const auto& appareil) {
    if (Lit(*appareil)) return false;
    Relâche(*appareil);
    return true;
  });
  return touches_.Etat();
}

bool ClavierEvdev::Lit(Appareil& appareil) {
  input_event évènement{};
  for (int lus = 0; lus < kEvènementsParLecture; ++lus) {
    const int suite = libevdev_next_event(appareil.evdev, appareil.lecture, &évènement);
    if (suite == -EAGAIN) {
      if (appareil.lecture == LIBEVDEV_READ_FLAG_NORMAL) return true;
      appareil.lecture = LIBEVDEV_READ_FLAG_NORMAL;
      continue;
    }
    if (suite == -EINTR) continue;
    if (suite < 0) return false;
    // The kernel dropped events: the library gives the differences until it says EAGAIN.
    if (suite == LIBEVDEV_READ_STATUS_SYNC) appareil.lecture = LIBEVDEV_READ_FLAG_SYNC;
    if (évènement.type == EV_KEY) touches_.Reçoit(évènement.code, évènement.value);
  }
  return true;
}

void ClavierEvdev::Relâche(const Appareil& appareil) {
  for (unsigned code = 0; code < KEY_CNT; ++code) {
    if (libevdev_get_event_value(appareil.evdev, EV_KEY, code) != 0) touches_.Reçoit(code, 0);
  }
}

void ClavierEvdev::EcritEtat(const EtatClavier& état) {
  // What waits belongs to the state that is overwritten.
  (void)LitEtat();
  touches_.Ecrit(état);
}

std::string ClavierEvdev::Défaut() const {
  if (!appareils_.empty()) return {};
  return "Clavier : aucun clavier lisible sous " + dossier_ +
         " ; branchez-en un ou ajoutez l'utilisateur au groupe input";
}

}  // namespace zuma::linux_
