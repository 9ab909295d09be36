#include "host/regard/gardien.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <utility>

#include "host/regard/recit.h"

namespace zuma::host {
namespace {

constexpr std::chrono::seconds kEntreDeuxEssais{1};

}  // namespace

using publication::EvènementLu;
using publication::GenreDEvènement;
using publication::Lu;

GardienDesArrêts::GardienDesArrêts(publication::Lecteur lecteur, std::string dossier,
                                   std::string laissée, Fenêtre fenêtre)
    : lecteur_(std::move(lecteur)),
      dossier_(std::move(dossier)),
      laissée_(std::move(laissée)),
      fenêtre_(fenêtre),
      évènement_(lecteur_.PremierEvènement()),
      fil_([this] { Tourne(); }) {}

GardienDesArrêts::~GardienDesArrêts() {
  {
    const std::lock_guard garde(verrou_);
    fin_ = true;
  }
  réveil_.notify_one();
  fil_.join();
}

void GardienDesArrêts::Tourne() {
  RecueilleCeQuiFutLaissé();
  while (!AttendLaFin()) Tour(false);
  Tour(true);
}

bool GardienDesArrêts::AttendLaFin() {
  constexpr std::chrono::milliseconds kIntervalle{50};
  std::unique_lock garde(verrou_);
  if (!fin_) réveil_.wait_for(garde, kIntervalle);
  return fin_;
}

void GardienDesArrêts::Tour(bool fin) {
  EvènementLu évènement;
  évènement_ = std::max(évènement_, lecteur_.PremierEvènement());
  for (; lecteur_.Lit(évènement_, évènement) == Lu::Bon; ++évènement_) {
    if (évènement.genre != GenreDEvènement::Arrêt) continue;
    enAttente_.push_back({évènement_, évènement.secondes + fenêtre_.après});
  }
  publication::Echantillon dernier;
  const bool vu = lecteur_.LitLeDernier(dernier);
  if (!fin && std::chrono::steady_clock::now() < prochain_) return;
  lecteur_.Actualise();
  while (!enAttente_.empty() && (fin || (vu && dernier.Secondes() >= enAttente_.front().jusquà))) {
    if (!Ecrit(lecteur_, enAttente_.front().arrêt) && !fin) {
      prochain_ = std::chrono::steady_clock::now() + kEntreDeuxEssais;
      return;
    }
    enAttente_.pop_front();
  }
}

// A host that died within the seconds behind a stop left it to the next one.
void GardienDesArrêts::RecueilleCeQuiFutLaissé() {
  if (laissée_.empty()) return;
  try {
    const publication::Lecteur lecteur(laissée_);
    for (const std::uint64_t arrêt : LesArrêts(lecteur)) {
      if (!EstGardé(lecteur, arrêt, dossier_)) (void)Ecrit(lecteur, arrêt);
    }
  } catch (const publication::Illisible& illisible) {
    std::fprintf(stderr, "zuma: stops of the host before cannot be kept: %s\n", illisible.what());
  }
}

// Also true of a stop that is overwritten: there is nothing to try again.
bool GardienDesArrêts::Ecrit(const publication::Lecteur& lecteur, std::uint64_t arrêt) {
  try {
    EcritLeCas(lecteur, arrêt, dossier_, fenêtre_);
    RetireLesVieuxCas(dossier_);
    dit_ = false;
    return true;
  } catch (const std::exception& échec) {
    if (!std::exchange(dit_, true)) {
      std::fprintf(stderr, "zuma: the stop is not kept as a case: %s\n", échec.what());
    }
    return false;
  }
}

}  // namespace zuma::host
