// The refresh of a sensor: selection, value by kind, tare, offset, validity, extremes.
#include <algorithm>
#include <cmath>

#include "base/garde.h"
#include "logic/entree_logique.h"
#include "sensors/capteur_genres.h"

namespace zuma {
namespace {

constexpr double kMicrosecondes = 1'000'000;
// Two refreshes at one time stamp: the period counts as this part of the integration time.
constexpr double kPartAuMêmeInstant = 300;
// The filter works while a refresh lasts less than this part of the integration time.
constexpr double kPartFiltrée = 30;
// Weight of the filter for a refresh of the whole integration time, and what is added to it.
constexpr double kPoids = 0.216;
constexpr double kPoidsAjouté = 0.54;

}  // namespace

// What follows is run for each sensor in each refresh: it stands in one place, innermost first, so
// that the compiler makes one piece of it.

// The limits themselves are outside, and so is a value that is no number. The value tested has
// neither tare nor offset in it.
inline void Capteur::ContrôleLesLimites() {
  const bool dedans = MiniCapteur_ < mdblValeurCourante && mdblValeurCourante < MaxiCapteur_ &&
                      mdblValeurCouranteEnPoints < mdblSécuritéMaxiEnPoints &&
                      mdblSécuritéMiniEnPoints < mdblValeurCouranteEnPoints;
  if (!dedans) SortDesLimites();
}

// First-order filter whose weight follows the actual period of the refresh.
inline double Capteur::Intègre(double points, Passe& passe) {
  MémoTemps = Timer()->LitMicrosecondes();
  double période = (MémoTemps - mdblAncienTemps) / kMicrosecondes;
  if (période == 0) période = mdblTempsIntégration / kPartAuMêmeInstant;
  passe.DeltaT = période;
  const double avant = mdblAncienneValeurEnPoints;
  // A channel that once gave no number must not hold the filter for ever.
  if (mdblTempsIntégration / kPartFiltrée > période && période != 0 && std::isfinite(avant)) {
    const double poids = std::max(mdblTempsIntégration * kPoids / période + kPoidsAjouté, 1.0);
    passe.Intégation = poids;
    points = ((poids - 1) * avant + points) / poids;
  }
  mdblAncienneValeurEnPoints = points;
  mdblAncienTemps = MémoTemps;
  return points;
}

// A sensor from a channel: zero, integration, calibration, limits and the stop.
[[gnu::always_inline]] inline void Capteur::CalculeDuCanal(Passe& passe) {
  mdblValeurCouranteEnPoints = mobjCanal ? mobjCanal->ValeurCanal() : 0;
  if (musrOpérationCouranteDeRAZ == ENUM_OPERATION_MAV::Acquisition && !passe.tenue) {
    passe.chacun([&] { AvanceLeZéro(passe); });
  }
  mdblValeurCouranteEnPoints -= ValeurDeRAZ_mdbl;
  mdblValeurCouranteEnPoints = Intègre(mdblValeurCouranteEnPoints, passe);
  const auto contrôle = [&] { passe.chacun([&] { ContrôleLesLimites(); }); };
  try {
    mdblValeurCourante = table_.VersUnités(mdblValeurCouranteEnPoints);
  } catch (...) {
    contrôle();  // a table that gives no units leaves the limits in points
    throw;
  }
  contrôle();
}

void Capteur::Calcul::Normal(Capteur& c, Passe& passe) {
  c.CalculeDuCanal(passe);
}

inline void Capteur::SuitLesExtrêmes() {
  if (mdblValeurCourante > mdblMaxiDétecté) {
    mdblMaxiDétecté = mdblValeurCourante;
    EtatMaxi_ = musrEtat;
  }
  if (mdblValeurCourante < mdblMiniDétecté) mdblMiniDétecté = mdblValeurCourante;
}

void Capteur::Calcul::ExtrêmesDeLaValeur(Capteur& c) {
  c.SuitLesExtrêmes();
}

// Most sensors are of one kind: that one is computed here, and not behind a pointer.
[[gnu::always_inline]] inline void Capteur::CalculeLaValeur(Passe& passe) {
  if (estNormal_) return CalculeDuCanal(passe);
  if (genre_ != nullptr && genre_->calcule != nullptr) genre_->calcule(*this, passe);
}

inline void Capteur::DétecteLesExtrêmes() {
  if (estNormal_) return SuitLesExtrêmes();
  if (genre_ != nullptr && genre_->extrêmes != nullptr) genre_->extrêmes(*this);
}

inline bool Capteur::LitLOffset(Passe& passe) {
  if (!paramètres_[ParamEprouvette::Offset]) return true;
  return passe.chacun([&] { passe.dblOffset = paramètres_.Nombre(ParamEprouvette::Offset); });
}

inline bool Capteur::EstSélectionné() const {
  return (!mobjELSelection || EntréeLAutorise()) &&
         (!paramètres_[ParamEprouvette::Sélection] ||
          paramètres_.Texte(ParamEprouvette::Sélection) == mstrValeurSelection);
}

// What fails on the way, a zero or the cause of a stop that was refused, is told at the end: no
// refresh may leave the limits untested, nor show a value without its tare and offset.
[[gnu::always_inline]] inline void Capteur::Rafraîchit(Passe& passe) {
  musrEtat = ENUM_ETAT_CAPTEUR::Correct;
  CapteurSelectionne_ = false;
  tropVieux_ = false;
  if (!EstSélectionné()) {
    Refuse();
    return;
  }
  CapteurSelectionne_ = true;
  if (!LitLOffset(passe)) {
    TientLaValeur(passe);
    return;
  }
  CalculeLaValeur(passe);
  if (musrOpérationCouranteDeTare == ENUM_OPERATION_MAV::Acquisition) AvanceLaTare(passe);
  mdblValeurCourante = passe.dblOffset + mdblValeurCourante - ValeurTare_;
  if (musrEtat == ENUM_ETAT_CAPTEUR::Correct && mdblSeuilDeLectureNonValide != 0 &&
      std::abs(mdblValeurCourante) < mdblSeuilDeLectureNonValide && !EtalonnageExterieurPossible_) {
    musrEtat = ENUM_ETAT_CAPTEUR::LectureNonValide;
  }
  if (AutoriseDétectionMaxi_) DétecteLesExtrêmes();
}

void Capteur::MetàJour() {
  Passe passe;
  Garde(
      *this, Forme::Méthode, "MetàJour",
      [&] {
        passe.chacun([&] { Rafraîchit(passe); });
        if (CapteurSelectionne_ && mdblAgeMaximal > 0) passe.chacun([&] { ContrôleLAge(); });
        passe.chacun.Termine();
      },
      [&](Variables& v) { RemplitLesVariables(v, passe); });
}

// Without its offset: the value shown stays, the limits are watched, and a zero or tare that runs
// is held: it would be measured on a value that nobody sees.
void Capteur::TientLaValeur(Passe& passe) {
  passe.tenue = true;
  const double tenue = mdblValeurCourante;
  passe.chacun([&] { CalculeLaValeur(passe); });
  mdblValeurCourante = tenue;
}

bool Capteur::EntréeLAutorise() const {
  switch (mobjELSelection->ValeurCourante()) {
    case ENUM_ETAT_LOGIQUE::Actif:
      return mstrEtatELSelection == "Actif";
    case ENUM_ETAT_LOGIQUE::Inactif:
      return mstrEtatELSelection == "Inactif";
    default:
      return true;
  }
}

// The minimum, the points, the zero and the tare stay; a running operation does not advance.
void Capteur::Refuse() {
  mdblValeurCourante = 0;
  mdblMaxiDétecté = 0;
  EtatMaxi_ = musrEtat;
}

// Stress and elongation follow the maximum of what they are made from; their minimum stays.
void Capteur::Calcul::MaxiDeLaForce(Capteur& c) {
  if (c.CapteursFils_->Count() == 0) return;
  const double maxi = c.Fils(0)->MaxiDétecté();
  if (maxi == c.MémoMaxi) return;
  c.MémoMaxi = maxi;
  c.mdblMaxiDétecté = c.ContrainteDepuisForce(maxi, c.mdblSurfaceCalculée);
  c.EtatMaxi_ = c.musrEtat;
}

void Capteur::Calcul::MaxiDeLAllongement(Capteur& c) {
  if (c.CapteursFils_->Count() == 0) return;
  const double maxi = c.Fils(0)->MaxiDétecté();
  if (maxi == c.MémoMaxi) return;
  c.MémoMaxi = maxi;
  if (!c.paramètres_[ParamEprouvette::S]) return;
  const double longueur = c.paramètres_.Nombre(ParamEprouvette::S);
  if (longueur == 0) return;
  c.mdblMaxiDétecté = maxi / longueur * kPourCent;
  c.EtatMaxi_ = c.musrEtat;
}

void Capteur::RazMaxiDétecté() {
  mdblMaxiDétecté = mdblValeurCourante;
  mdblMiniDétecté = mdblValeurCourante;
}

void Capteur::RemplitLesVariables(Variables& v, const Passe& passe) const {
  const auto nombre = [](auto enumération) { return static_cast<std::int32_t>(enumération); };
  v.Ajoute("musrEtat", nombre(musrEtat));
  v.Ajoute("musrTypeDeCapteur", nombre(musrTypeDeCapteur));
  v.Ajoute("mdblValeurCouranteEnPoints", mdblValeurCouranteEnPoints);
  v.Ajoute("musrOpérationCouranteDeRAZ", nombre(musrOpérationCouranteDeRAZ));
  v.Ajoute("mdblSommeCanalPourMAV", mdblSommeCanalPourMAV);
  v.Ajoute("mintNbLectureEffectuées", mintNbLectureEffectuées);
  v.Ajoute("mlngNbLecturePourRAZ", mlngNbLecturePourRAZ);
  v.Ajoute("AncienZéroEnPoints", passe.AncienZéroEnPoints);
  v.Ajoute("dblMoyenne", passe.dblMoyenne);
  v.Ajoute("ValeurDeRAZ_mdbl", ValeurDeRAZ_mdbl);
  v.Ajoute("MémoTemps", MémoTemps);
  v.Ajoute("mdblAncienTemps", mdblAncienTemps);
  v.Ajoute("DeltaT", passe.DeltaT);
  v.Ajoute("mdblTempsIntégration", mdblTempsIntégration);
  v.Ajoute("mdblAncienneValeurEnPoints", mdblAncienneValeurEnPoints);
  v.Ajoute("Intégation", passe.Intégation);
  v.Ajoute("mdblValeurCourante", mdblValeurCourante);
  v.Ajoute("mdblSeuilDeLectureNonValide", mdblSeuilDeLectureNonValide);
  v.Ajoute("mdblMaxiDétecté", mdblMaxiDétecté);
  v.Ajoute("mdblMiniDétecté", mdblMiniDétecté);
  v.Ajoute("mblnArrêtSiDépassement", mblnArrêtSiDépassement);
  if (mobjCanal) {
    v.AjouteLigne("Canal utilisé mobjCanal", mobjCanal->Nom());
  } else {
    v.AjouteVide();
  }
}

}  // namespace zuma
