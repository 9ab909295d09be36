#include "host/rangees_publiees.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zuma::host {

using publication::Lu;

namespace {

std::vector<std::size_t> LesObjets(const publication::ChassisPublié& chassis,
                                   publication::Genre genre) {
  std::vector<std::size_t> rangs;
  for (std::size_t rang = 0; rang < chassis.objets.size(); ++rang) {
    if (chassis.objets[rang].genre == genre) rangs.push_back(rang);
  }
  return rangs;
}

}  // namespace

std::vector<std::size_t> LesCanaux(const publication::ChassisPublié& chassis) {
  return LesObjets(chassis, publication::Genre::Canal);
}

std::vector<std::size_t> LesCapteurs(const publication::ChassisPublié& chassis) {
  return LesObjets(chassis, publication::Genre::Capteur);
}

RangéesPubliées::RangéesPubliées(publication::Lecteur lecteur, std::vector<std::size_t> objets,
                                 Contenu contenu, std::uint64_t premier, double origine)
    : lecteur_(std::move(lecteur)),
      objets_(std::move(objets)),
      contenu_(contenu),
      évènement_(lecteur_.EvènementSuivant()),
      origine_(origine),
      suivant_(premier) {
  if (contenu_.rejouable) canaux_ = LesCanaux(lecteur_.LeChassis());
  valeurs_.resize(objets_.size() * (contenu_.âges ? 2 : 1) +
                  (contenu_.rejouable ? 1 + canaux_.size() : 0));
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
    const double secondes = échantillon_.Secondes() - origine_;
    PrendLesValeurs(secondes);
    PrendLesActes();
    prend({secondes, LacuneAvant(secondes, échantillon_.Rafraîchissements()), actes_, valeurs_});
    ++suivant_;
    return true;
  }
  return false;
}

void RangéesPubliées::PrendLesValeurs(double secondes) {
  auto valeur = valeurs_.begin();
  for (const std::size_t objet : objets_) {
    const publication::Mesure mesure = échantillon_[objet];
    *valeur++ = mesure.valeur;
    if (contenu_.âges) *valeur++ = mesure.âge;
  }
  if (!contenu_.rejouable) return;
  *valeur++ = échantillon_.Horloge();
  // One that was read before is no reading of this row: it keeps its age when it is played again.
  // One of the row before has the age of that row, but for the digits that a published age lacks.
  constexpr double kMêmeInstant = 1e-5;
  const double depuis =
      rafraîchissements_ ? secondes - secondes_ : std::numeric_limits<double>::infinity();
  for (const std::size_t canal : canaux_) {
    const publication::Mesure mesure = échantillon_[canal];
    const bool nouvelle = mesure.Est(publication::kLu) && mesure.âge < depuis - kMêmeInstant;
    *valeur++ = nouvelle ? mesure.valeur : std::numeric_limits<double>::quiet_NaN();
  }
}

// Those that the refresh of this row was the first to feel.
void RangéesPubliées::PrendLesActes() {
  using publication::GenreDEvènement;
  struct Ligne {
    GenreDEvènement genre;
    ActeSurCapteur acte;
  };
  constexpr std::array<Ligne, 4> kLignes{
      {{GenreDEvènement::ZéroRepris, ActeSurCapteur::ZéroRepris},
       {GenreDEvènement::TareReprise, ActeSurCapteur::TareReprise},
       {GenreDEvènement::Zéro, ActeSurCapteur::Zéro},
       {GenreDEvènement::Tare, ActeSurCapteur::Tare}}};
  actes_.clear();
  if (!contenu_.rejouable) return;
  évènement_ = std::max(évènement_, lecteur_.PremierEvènement());
  for (; évènement_ < lecteur_.EvènementSuivant(); ++évènement_) {
    if (lecteur_.Lit(évènement_, lu_) != Lu::Bon) continue;
    if (lu_.passe > échantillon_.Passe()) return;
    const auto* ligne = std::ranges::find(kLignes, lu_.genre, &Ligne::genre);
    if (ligne == kLignes.end() || !lu_.objet) continue;
    actes_.push_back({ligne->acte, lecteur_.LeChassis().objets[*lu_.objet].nom, lu_.valeur});
  }
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
