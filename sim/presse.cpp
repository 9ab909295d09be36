#include "sim/presse.h"

#include <algorithm>
#include <cmath>

namespace zuma::sim {
namespace {

constexpr double kPas = 0.0005;  // seconds

// First order approach of `valeur` to `cible`.
double Approche(double valeur, double cible, double dt, double constante) {
  return cible + (valeur - cible) * std::exp(-dt / constante);
}

}  // namespace

void Presse::Avance(double secondes) {
  for (double reste = secondes; reste > 0; reste -= kPas) Pas(std::min(reste, kPas));
}

double Presse::PressionUtilisation() const noexcept {
  return réglages_.pressionRepos + force_ / réglages_.aireVérin;
}

double Presse::RaideurEprouvette() const noexcept {
  return réglages_.raideurEprouvette * (cassée_ ? réglages_.résidu : 1);
}

double Presse::Raccourcissement() const noexcept {
  return force_ / RaideurEprouvette();
}

bool Presse::FinDeCourseHaut() const noexcept {
  return position_ >= réglages_.course;
}

bool Presse::FinDeCourseBas() const noexcept {
  return position_ <= 0;
}

double Presse::Vitesse() const {
  const double fuite = -réglages_.fuite * (PressionUtilisation() - réglages_.pressionRepos);
  if (!distributeur || !Armée()) return fuite;
  const double ouverture = std::fabs(tiroir_) - réglages_.bandeMorte;
  if (ouverture <= 0) return fuite;
  const double chute = tiroir_ > 0 ? alimentation_ - PressionUtilisation() : PressionUtilisation();
  const double débit = réglages_.vitesseMaximale * ouverture *
                       std::sqrt(std::max(chute, 0.0) / réglages_.pressionPompe);
  return fuite + (tiroir_ > 0 ? débit : -débit);
}

void Presse::CalculeForce() noexcept {
  const double écrasement = std::max(0.0, position_ - réglages_.contact);
  const double eprouvette = RaideurEprouvette();
  force_ = écrasement * eprouvette * réglages_.raideurBâti / (eprouvette + réglages_.raideurBâti);
}

void Presse::Pas(double dt) {
  const bool sousPression = pompe && Armée();
  alimentation_ = Approche(alimentation_, sousPression ? réglages_.pressionPompe : 0, dt,
                           réglages_.montéePression);
  tiroir_ = Approche(tiroir_, std::clamp(servovalve, -1.0, 1.0), dt, réglages_.constanteServovalve);
  position_ = std::clamp(position_ + Vitesse() * dt, 0.0, réglages_.course);
  CalculeForce();
  if (force_ < réglages_.rupture || cassée_) return;
  cassée_ = true;
  CalculeForce();
}

}  // namespace zuma::sim
