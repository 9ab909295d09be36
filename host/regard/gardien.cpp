#include "host/regard/gardien.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <utility>

namespace zuma::host {

using publication::EvènementLu;
using publication::GenreDEvènement;
using publication::Lu;

GardienDesArrêts::GardienDesArrêts(publication::Lecteur lecteur, std::string dossier,
                                   Fenêtre fenêtre)
    : lecteur_(std::move(lecteur)),
      dossier_(std::move(dossier)),
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
  while (!enAttente_.empty() && (fin || (vu && dernier.Secondes() >= enAttente_.front().jusquà))) {
    Ecrit(enAttente_.front().arrêt);
    enAttente_.pop_front();
  }
}

void GardienDesArrêts::Ecrit(std::uint64_t arrêt) {
  try {
    lecteur_.Actualise();
    EcritLeCas(lecteur_, arrêt, dossier_, fenêtre_);
    RetireLesVieuxCas(dossier_);
    dit_ = false;
  } catch (const std::exception& échec) {
    if (!std::exchange(dit_, true)) {
      std::fprintf(stderr, "zuma: the stop is not kept as a case: %s\n", échec.what());
    }
  }
}

}  // namespace zuma::host
