#include "host/rangees_publiees.h"

#include <algorithm>
#include <utility>

namespace zuma::host {

using publication::Lu;

RangéesPubliées::RangéesPubliées(publication::Lecteur lecteur, std::vector<std::size_t> objets,
                                 bool avecAges, std::uint64_t premier, double origine)
    : lecteur_(std::move(lecteur)),
      objets_(std::move(objets)),
      avecAges_(avecAges),
      origine_(origine),
      valeurs_(objets_.size() * (avecAges ? 2 : 1)),
      suivant_(premier) {
  // What was refreshed by then is no row that is lost.
  if (premier > 0 && lecteur_.Lit(premier - 1, échantillon_) == Lu::Bon) {
    rafraîchissements_ = échantillon_.Rafraîchissements();
    secondes_ = échantillon_.Secondes() - origine_;
  }
}

bool RangéesPubliées::Retire(const std::function<void(const Rangée&)>& prend) {
  for (; suivant_ < fin_; ++suivant_) {
    const Lu lu = lecteur_.Lit(suivant_, échantillon_);
    if (lu == Lu::PasEncore) return false;
    if (lu == Lu::Dépassé) Rattrape();
    if (lu == Lu::Dépassé || !échantillon_.Rafraîchi()) continue;
    auto valeur = valeurs_.begin();
    for (const std::size_t objet : objets_) {
      const publication::Mesure mesure = échantillon_[objet];
      *valeur++ = mesure.valeur;
      if (avecAges_) *valeur++ = mesure.âge;
    }
    const double secondes = échantillon_.Secondes() - origine_;
    prend({secondes, LacuneAvant(secondes, échantillon_.Rafraîchissements()), valeurs_});
    ++suivant_;
    return true;
  }
  return false;
}

// Not to the very edge of the ring, where the next read would be overtaken, too.
void RangéesPubliées::Rattrape() {
  constexpr std::uint64_t kMarge = 8;
  const std::uint64_t premier = lecteur_.Premier();
  suivant_ = std::max<std::uint64_t>(suivant_, premier + (lecteur_.Suivant() - premier) / kMarge);
}

// By the count of the refreshes: a sample of an event is none.
Lacune RangéesPubliées::LacuneAvant(double secondes, std::uint64_t rafraîchissements) {
  const std::uint64_t avant = rafraîchissements_.value_or(rafraîchissements - 1);
  const Lacune lacune{rafraîchissements - avant - 1, secondes_, secondes};
  rafraîchissements_ = rafraîchissements;
  secondes_ = secondes;
  return lacune.rangées == 0 ? Lacune{} : lacune;
}

void RangéesPubliées::FinitIci() {
  publication::Echantillon dernier;
  if (!lecteur_.LitLeDernier(dernier)) return;
  rafraîchissementsALaFin_ = dernier.Rafraîchissements();
  secondesALaFin_ = dernier.Secondes() - origine_;
  fin_ = dernier.Numéro() + 1;
}

Lacune RangéesPubliées::Manque() {
  if (!rafraîchissements_ || rafraîchissementsALaFin_ <= *rafraîchissements_) return {};
  return {rafraîchissementsALaFin_ - *rafraîchissements_, secondes_, secondesALaFin_};
}

std::uint64_t RangéesPubliées::EnRetard() const noexcept {
  return lecteur_.Suivant() - suivant_;
}

}  // namespace zuma::host
