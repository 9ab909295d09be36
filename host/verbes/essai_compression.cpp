#include "host/verbes/essai_compression.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/recherche.h"
#include "host/configuration.h"

namespace zuma::host {
namespace {

constexpr double kPressionPrête = 180;  // bar
constexpr double kContact = 0.3;        // kN that tell the platen has met the specimen
constexpr double kApproche = 10;        // % of the valve
constexpr double kRetour = -20;         // % of the valve
constexpr double kAvance = 1.2;         // % that overcome the dead band of the valve
constexpr double kGainP = 3;            // % for each MPa of error
constexpr double kGainI = 2;            // % for each MPa second
constexpr double kRuptureSous = 0.8;    // share of the maximum that tells a break
constexpr double kForceMinimale = 5;    // kN below which no break is looked for

// Seconds.
constexpr double kAttente = 0.2;
constexpr double kDélaiPression = 10;
constexpr double kDélaiArmement = 2;
constexpr double kDélaiApproche = 60;
constexpr double kDuréeRetour = 2;
constexpr double kDuréeRepos = 0.1;

// A force that does not move by any noise while the press comes near, or a stress that does not
// while so much more is asked for, is frozen. Seconds, MPa.
constexpr double kImmobileEnApproche = 1;
constexpr double kMontéeSansEffet = 0.5;
constexpr double kImmobileAuMoins = 0.25;

constexpr std::array<std::string_view, 6> kFins{
    "specimen broken", "stop", "safety chain open", "time limit", "interrupted", "force not valid"};

template <class T>
Ref<T> Exige(Ref<T> objet, const char* quoi) {
  if (!objet) throw MauvaisUsage(std::string("this frame has no ") + quoi);
  return objet;
}

CommandeRef CommandeDeLabel(Chassis& chassis, std::string_view label) {
  for (const CommandeRef& commande : *chassis.Commandes()) {
    if (commande->Label() == label) return commande;
  }
  return {};
}

}  // namespace

std::string_view Texte(EssaiCompression::Fin fin) noexcept {
  return kFins[static_cast<std::size_t>(fin)];
}

EssaiCompression::Organes::Organes(Chassis& chassis)
    : force(Exige(recherche::CapteurDeLabel(chassis, "Force"), "sensor Force")),
      contrainte(Exige(recherche::CapteurDeLabel(chassis, "Contrainte"), "sensor Contrainte")),
      déformation(Exige(recherche::CapteurDeLabel(chassis, "Déformation"), "sensor Déformation")),
      alimentation(Exige(recherche::CapteurDeLabel(chassis, "Pression alimentation"),
                         "sensor Pression alimentation")),
      armé(Exige(chassis.AU(), "the input named in Entrée Armé")),
      pompe(Exige(recherche::SortieLogiqueDeLabel(chassis, "Pompe"), "output Pompe")),
      distributeur(
          Exige(recherche::SortieLogiqueDeLabel(chassis, "Distributeur"), "output Distributeur")),
      servovalve(Exige(CommandeDeLabel(chassis, "Servovalve"), "command Servovalve")) {}

// A step of the test: what begins it, what follows each pass, and how long it may take before the
// test ends; 0 is as long as it wants.
struct EssaiCompression::Etape {
  std::string_view phase;
  void (EssaiCompression::*commence)();
  void (EssaiCompression::*suit)();
  double délai = 0;

  static const Etape kAttente, kPression, kArmement, kApproche, kCharge, kRetour, kRepos;
};

using E = EssaiCompression;
const E::Etape E::Etape::kAttente{"starting", nullptr, &E::Attend};
const E::Etape E::Etape::kPression{"building up pressure", &E::MetEnService, &E::AttendLaPression,
                                   kDélaiPression};
const E::Etape E::Etape::kArmement{"arming", nullptr, &E::AttendLArmement, kDélaiArmement};
const E::Etape E::Etape::kApproche{"approaching", &E::Approche, &E::AttendLeContact,
                                   kDélaiApproche};
const E::Etape E::Etape::kCharge{"loading", &E::CommenceLaCharge, &E::Charge};
const E::Etape E::Etape::kRetour{"unloading", &E::Retire, &E::AttendLeRetour};
const E::Etape E::Etape::kRepos{"coming to rest", &E::MetAuRepos, &E::AttendLeRepos};

EssaiCompression::EssaiCompression(Chassis& chassis, const linux_::Securite& sécurité,
                                   const Réglages& réglages)
    : chassis_(chassis),
      sécurité_(sécurité),
      réglages_(réglages),
      organes_(chassis),
      étape_(&Etape::kAttente) {}

void EssaiCompression::Entre(const Etape& étape) {
  étape_ = &étape;
  nouvelle_ = true;
  début_ = secondes_;
}

std::string_view EssaiCompression::Phase() const noexcept {
  return étape_ == nullptr ? "at rest" : étape_->phase;
}

std::optional<double> EssaiCompression::SecondesDeCharge() const {
  if (étape_ != &Etape::kCharge) return {};
  return secondes_ - début_;
}

// A stop ends the test whatever its step. A force that is not valid counts more than a break: a
// cell that is lost reads like a broken specimen. Before the first step sensors may not have been
// read.
void EssaiCompression::Observe(double secondes) {
  secondes_ = secondes;
  if (fin_ || étape_ == nullptr) return;
  const bool rompue = étape_ == &Etape::kCharge && Mesure();
  if (sécurité_.Déclenchée()) return Finit(Fin::Arrêt);
  if (armé_ && organes_.armé->ValeurCourante() != ENUM_ETAT_LOGIQUE::Actif) {
    return Finit(Fin::Chaîne);
  }
  if (étape_ != &Etape::kAttente) défaut_ = ChercheUnDéfaut();
  if (défaut_) return Finit(Fin::ForceNonValide);
  if (rompue) Finit(Fin::Rupture);
}

std::optional<DéfautCapteur> EssaiCompression::ChercheUnDéfaut() {
  const Capteur& force = *organes_.force;
  const Capteur& contrainte = *organes_.contrainte;
  if (auto défaut = DéfautDe(force)) return défaut;
  if (auto défaut = DéfautDe(contrainte)) return défaut;
  if (std::exchange(rafraichissements_, chassis_.RafraichissementsEA()) !=
      chassis_.RafraichissementsEA()) {
    mouvementDeLaForce_.Note(force, secondes_);
    mouvementDeLaContrainte_.Note(contrainte, secondes_);
  }
  const auto figé = [](const Capteur& c) {
    return DéfautCapteur{DéfautCapteur::Genre::Figé, c.NomDuCapteur()};
  };
  const bool charge = étape_ == &Etape::kCharge;
  if (étape_ != &Etape::kApproche && !charge) return {};
  const double enCharge = std::max(kImmobileAuMoins, kMontéeSansEffet / réglages_.vitesse);
  if (mouvementDeLaForce_.Immobile() > (charge ? enCharge : kImmobileEnApproche)) {
    return figé(force);
  }
  if (charge && mouvementDeLaContrainte_.Immobile() > enCharge) return figé(contrainte);
  return {};
}

// A step that ends hands over to the next one at once.
void EssaiCompression::Agit() {
  const Etape* faite = nullptr;
  while (étape_ != nullptr && étape_ != faite) {
    faite = étape_;
    if (std::exchange(nouvelle_, false) && faite->commence != nullptr) (this->*faite->commence)();
    (this->*faite->suit)();
  }
  if (étape_ != nullptr && étape_->délai > 0 && Depuis(étape_->délai)) Finit(Fin::Délai);
}

// It unloads by valve after a break alone: without a force nobody knows which way is out, and the
// valve closes.
void EssaiCompression::Finit(Fin fin) {
  if (fin_) return;
  fin_ = fin;
  if (étape_ == &Etape::kCharge) résultat_.durée = secondes_ - début_;
  Conclut();
  Entre(fin == Fin::Rupture ? Etape::kRetour : Etape::kRepos);
}

void EssaiCompression::Attend() {
  if (Depuis(kAttente)) Entre(Etape::kPression);
}

// The valve first: a set point left over must not move the press once there is pressure.
void EssaiCompression::MetEnService() {
  chassis_.Watchdog()->Enabled(true);
  organes_.servovalve->Enabled(true);
  organes_.servovalve->ValeurCouranteEnUnité(0);
  organes_.pompe->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
  organes_.distributeur->ValeurCourante(ENUM_ETAT_LOGIQUE::Actif);
}

void EssaiCompression::AttendLaPression() {
  if (organes_.alimentation->ValeurCourante() > kPressionPrête) Entre(Etape::kArmement);
}

void EssaiCompression::AttendLArmement() {
  armé_ = organes_.armé->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif;
  if (armé_) Entre(Etape::kApproche);
}

void EssaiCompression::Approche() {
  organes_.servovalve->ValeurCouranteEnUnité(kApproche);
}

void EssaiCompression::AttendLeContact() {
  if (organes_.force->ValeurCourante() > kContact) Entre(Etape::kCharge);
}

void EssaiCompression::CommenceLaCharge() {
  contrainteDépart_ = organes_.contrainte->ValeurCourante();
  dernière_ = secondes_;
}

// Constant stress rate: a proportional and integral correction around the dead band.
void EssaiCompression::Charge() {
  const double t = secondes_ - début_;
  if (t > réglages_.limite) {
    Finit(Fin::Délai);
    return;
  }
  const double contrainte = organes_.contrainte->ValeurCourante();
  const double erreur = contrainteDépart_ + réglages_.vitesse * t - contrainte;
  intégrale_ += erreur * (secondes_ - dernière_);
  dernière_ = secondes_;
  organes_.servovalve->ValeurCouranteEnUnité(kAvance + kGainP * erreur + kGainI * intégrale_);
}

// True on a break. The curve ends there: what the sensors of a broken specimen show is no material.
bool EssaiCompression::Mesure() {
  const double force = organes_.force->ValeurCourante();
  if (!std::isfinite(force) || !std::isfinite(organes_.contrainte->ValeurCourante())) return false;
  if (résultat_.forceMaximale > kForceMinimale && force < kRuptureSous * résultat_.forceMaximale) {
    return true;
  }
  points_.push_back(
      {secondes_, organes_.contrainte->ValeurCourante(), organes_.déformation->ValeurCourante()});
  résultat_.forceMaximale = std::max(résultat_.forceMaximale, force);
  résultat_.contrainteMaximale = std::max(résultat_.contrainteMaximale, points_.back().contrainte);
  return false;
}

// Back to a force of nothing.
void EssaiCompression::Retire() {
  organes_.servovalve->ValeurCouranteEnUnité(kRetour);
}

void EssaiCompression::AttendLeRetour() {
  if (sécurité_.Déclenchée() || Depuis(kDuréeRetour)) Entre(Etape::kRepos);
}

// After a stop nothing is commanded: its outputs stay where the stop put them.
void EssaiCompression::MetAuRepos() {
  if (sécurité_.Déclenchée()) return;
  organes_.servovalve->ValeurCouranteEnUnité(0);
  organes_.distributeur->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
  organes_.pompe->ValeurCourante(ENUM_ETAT_LOGIQUE::Inactif);
  chassis_.Watchdog()->Enabled(false);
}

void EssaiCompression::AttendLeRepos() {
  if (Depuis(kDuréeRepos)) étape_ = nullptr;
}

// Least squares over the part of the load that a standard looks at.
void EssaiCompression::Conclut() {
  double n = 0, st = 0, sc = 0, stt = 0, stc = 0;
  for (const Point& p : points_) {
    if (p.contrainte > 0.9 * résultat_.contrainteMaximale) break;
    if (p.contrainte < 0.2 * résultat_.contrainteMaximale) continue;
    n += 1;
    st += p.secondes;
    sc += p.contrainte;
    stt += p.secondes * p.secondes;
    stc += p.secondes * p.contrainte;
  }
  const double d = n * stt - st * st;
  résultat_.vitesseTenue = d > 0 ? (n * stc - st * sc) / d : 0;
}

}  // namespace zuma::host
