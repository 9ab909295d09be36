// The refresh of a sensor: selection, value by kind, tare, offset, validity, extremes.
#include <cmath>

#include "base/garde.h"
#include "logic/entree_logique.h"
#include "sensors/capteur_genres.h"

namespace zuma {

void Capteur::MetàJour() {
  Passe passe;
  Garde(
      *this, Forme::Méthode, "MetàJour",
      [&] {
        passe.chacun([&] { Rafraîchit(passe); });
        if (CapteurSelectionne_) passe.chacun([&] { ContrôleLAge(); });
        passe.chacun.Termine();
      },
      [&](Variables& v) { RemplitLesVariables(v, passe); });
}

// What fails on the way, a zero or the cause of a stop that was refused, is told at the end: no
// refresh may leave the limits untested, nor show a value without its tare and offset.
void Capteur::Rafraîchit(Passe& passe) {
  musrEtat = ENUM_ETAT_CAPTEUR::Correct;
  CapteurSelectionne_ = false;
  tropVieux_ = false;
  if (!EntréeLAutorise() || !ParamètreLAutorise()) {
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
  if (AutoriseDétectionMaxi_ && genre_ != nullptr && genre_->extrêmes != nullptr) {
    genre_->extrêmes(*this);
  }
}

void Capteur::CalculeLaValeur(Passe& passe) {
  if (genre_ != nullptr && genre_->calcule != nullptr) genre_->calcule(*this, passe);
}

bool Capteur::LitLOffset(Passe& passe) {
  if (!paramètres_[ParamEprouvette::Offset]) return true;
  return passe.chacun([&] { passe.dblOffset = paramètres_.Nombre(ParamEprouvette::Offset); });
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
  if (!mobjELSelection) return true;
  switch (mobjELSelection->ValeurCourante()) {
    case ENUM_ETAT_LOGIQUE::Actif:
      return mstrEtatELSelection == "Actif";
    case ENUM_ETAT_LOGIQUE::Inactif:
      return mstrEtatELSelection == "Inactif";
    default:
      return true;
  }
}

bool Capteur::ParamètreLAutorise() const {
  return !paramètres_[ParamEprouvette::Sélection] ||
         paramètres_.Texte(ParamEprouvette::Sélection) == mstrValeurSelection;
}

// The minimum, the points, the zero and the tare stay; a running operation does not advance.
void Capteur::Refuse() {
  mdblValeurCourante = 0;
  mdblMaxiDétecté = 0;
  EtatMaxi_ = musrEtat;
}

void Capteur::Calcul::ExtrêmesDeLaValeur(Capteur& c) {
  if (c.mdblValeurCourante > c.mdblMaxiDétecté) {
    c.mdblMaxiDétecté = c.mdblValeurCourante;
    c.EtatMaxi_ = c.musrEtat;
  }
  if (c.mdblValeurCourante < c.mdblMiniDétecté) c.mdblMiniDétecté = c.mdblValeurCourante;
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
