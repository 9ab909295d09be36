// How old the value of a sensor is, and what a sensor does that is too old.
#include <algorithm>
#include <string>

#include "sensors/capteur_genres.h"

namespace zuma {
namespace {

// Instruments that a sensor asks itself are opened anew after five seconds of silence.
constexpr double kSilenceDInstrument = 5;
constexpr double kSilenceDuDehors = 1;

}  // namespace

Capteur::AgeDeMesure Capteur::Calcul::AgeDuCanal(const Capteur& c) {
  if (!c.mobjCanal) return {};
  return {c.mobjCanal->Age(), c.mobjCanal->EstVieux(), c.mobjCanal->EstLu()};
}

// Most sensors are of one kind: its age is taken here, and not behind a pointer.
Capteur::AgeDeMesure Capteur::LAge() const {
  if (estNormal_) return Calcul::AgeDuCanal(*this);
  return genre_ != nullptr && genre_->âge != nullptr ? genre_->âge(*this) : AgeDeMesure{};
}

// A sensor found below itself is told where its value is asked.
Capteur::AgeDeMesure Capteur::Calcul::AgeDesFils(const Capteur& c) {
  AgeDeMesure âge;
  if (c.descend_ || !c.CapteursFils_) return âge;
  const EnCours descente = c.Descend();
  for (const CapteurRef& fils : *c.CapteursFils_) {
    const AgeDeMesure sien = fils->LAge();
    const bool compte = fils->Enabled_bln() && fils->CapteurSelectionne();
    âge = {std::max(âge.secondes, sien.secondes), âge.vieux || sien.vieux,
           âge.lue && (sien.lue || !compte)};
  }
  return âge;
}

Capteur::AgeDeMesure Capteur::Calcul::AgeDeLInstrument(const Capteur& c) {
  const double secondes = c.LaPlateforme().heureDePasse - c.heureDeMesure_;
  return {secondes, secondes > kSilenceDInstrument, c.mesuré_};
}

Capteur::AgeDeMesure Capteur::Calcul::AgeDuDehors(const Capteur& c) {
  const double secondes = c.LaPlateforme().heureDePasse - c.heureDeMesure_;
  return {secondes, secondes > kSilenceDuDehors, c.mesuré_};
}

bool Capteur::EstDUnInstrument() const {
  return genre_ != nullptr &&
         (genre_->âge == Calcul::AgeDeLInstrument || genre_->âge == Calcul::AgeDuDehors);
}

// An overrun stops for itself. Like the limits, the age is not watched while the sensor is open to
// calibration by the user.
void Capteur::ContrôleLAge() {
  if (EtalonnageExterieurPossible_ || AU()) return;
  if (!(Age() > mdblAgeMaximal)) return;
  musrEtat = ENUM_ETAT_CAPTEUR::LectureNonValide;
  if (!mblnArrêtSiDépassement || !mblnAutoriseAU) return;
  tropVieux_ = true;
  DéclencheLArrêt(&Capteur::CauseDeLAge);
}

std::string Capteur::CauseDeLAge() const {
  return "Lecture trop ancienne du " + mstrNom + " : " + EnTexte(Age()) + " s, " +
         EnTexte(mdblAgeMaximal) + " s au plus";
}

}  // namespace zuma
