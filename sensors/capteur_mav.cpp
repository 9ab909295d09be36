// Zero and tare: measured over a number of refreshes with one sum and one count for both.
#include <cmath>
#include <limits>

#include "base/garde.h"
#include "sensors/capteur_genres.h"

namespace zuma {

void Capteur::CommenceMAV(ENUM_OPERATION_MAV& opération) {
  mdblSommeCanalPourMAV = 0;
  mintNbLectureEffectuées = 0;
  opération = ENUM_OPERATION_MAV::Acquisition;
}

void Capteur::Compte(std::uint8_t GestesDuCapteur::* geste) {
  ++(gestes_.*geste);
  ++LaPlateforme().gestes;
}

void Capteur::Raz() {
  Garde(*this, Forme::Méthode, "Raz", [&] {
    if (genre_ != nullptr && genre_->remetàZéro != nullptr) genre_->remetàZéro(*this);
  });
}

void Capteur::Calcul::RazDuCanal(Capteur& c) {
  if (c.musrOpérationCouranteDeRAZ != ENUM_OPERATION_MAV::RienFaire) return;
  c.Compte(&GestesDuCapteur::zéros);
  c.CommenceMAV(c.musrOpérationCouranteDeRAZ);
}

void Capteur::Calcul::RazDeLaMontre(Capteur& c) {
  c.Compte(&GestesDuCapteur::zéros);
  c.ValeurDeRAZ_mdbl = c.Timer()->LitMicrosecondes() - c.mdblDépartCapteurTemps;
  c.MetàJour();
}

void Capteur::Calcul::RazDuPetit(Capteur& c) {
  const EnCours descente = c.Descend();
  c.PetitCapteur()->Raz();
}

void Capteur::Calcul::RazDesFils(Capteur& c) {
  const EnCours descente = c.Descend();
  for (const CapteurRef& fils : *c.CapteursFils_) fils->Raz();
}

void Capteur::Tare(const Valeur& ValeurApresTarage_var) {
  Garde(*this, Forme::Méthode, "Tare", [&] {
    if (musrOpérationCouranteDeTare != ENUM_OPERATION_MAV::RienFaire) return;
    mdblValeurApresTarage = VersDouble(ValeurApresTarage_var);
    Compte(&GestesDuCapteur::tares);
    CommenceMAV(musrOpérationCouranteDeTare);
  });
}

void Capteur::AnnuleRaz() {
  Garde(*this, Forme::Méthode, "AnnuleRaz", [&] {
    ValeurDeRAZ_mdbl = 0;
    Compte(&GestesDuCapteur::zérosRepris);
    if (musrTypeDeCapteur != ENUM_TYPE_CAPTEUR::CapteurRecouvrement) return;
    const EnCours descente = Descend();
    PetitCapteur()->AnnuleRaz();
  });
}

void Capteur::AnnuleTare() {
  ValeurTare_ = 0;
  EtatDeLaTare_ = false;
  Compte(&GestesDuCapteur::taresReprises);
}

ENUM_OPERATION_MAV Capteur::EtatRAZ() const {
  return Garde(*this, Forme::Lecture, "EtatRAZ", [&] {
    if (musrTypeDeCapteur != ENUM_TYPE_CAPTEUR::CapteurRecouvrement) {
      return musrOpérationCouranteDeRAZ;
    }
    const EnCours descente = Descend();
    return PetitCapteur()->EtatRAZ();
  });
}

// The average is complete at exactly that number of readings, and that ends both operations. The
// count has 16 bits: it stops there, so that a larger number is never reached and the sensor goes
// on reading. A reading that is no number does not count: it would make a correction of none.
bool Capteur::AccumuleMAV(double valeur, double zéro, std::int32_t nbLectures, double& moyenne) {
  if (mintNbLectureEffectuées == std::numeric_limits<std::int16_t>::max()) return false;
  if (!std::isfinite(valeur)) return false;
  ++mintNbLectureEffectuées;
  mdblSommeCanalPourMAV += valeur;
  if (mintNbLectureEffectuées != nbLectures) return false;
  moyenne = mdblSommeCanalPourMAV / mintNbLectureEffectuées - zéro;
  musrOpérationCouranteDeRAZ = ENUM_OPERATION_MAV::RienFaire;
  musrOpérationCouranteDeTare = ENUM_OPERATION_MAV::RienFaire;
  mintNbLectureEffectuées = 0;
  return true;
}

// On raw points: the new zero replaces the old one.
void Capteur::AvanceLeZéro(Passe& passe) {
  try {
    passe.AncienZéroEnPoints = table_.VersPoints(0);
  } catch (...) {
    // Left running it would fail in every refresh.
    musrOpérationCouranteDeRAZ = ENUM_OPERATION_MAV::RienFaire;
    throw;
  }
  if (!AccumuleMAV(mdblValeurCouranteEnPoints, passe.AncienZéroEnPoints, mlngNbLecturePourRAZ,
                   passe.dblMoyenne)) {
    return;
  }
  ValeurDeRAZ_mdbl = passe.dblMoyenne;
  mdblMaxiDétecté = mdblSécuritéMiniEnUnité;
  EtatMaxi_ = ENUM_ETAT_CAPTEUR::Correct;
  // The filter starts from the corrected reference and shows no step.
  mdblAncienneValeurEnPoints = mdblValeurCouranteEnPoints - passe.dblMoyenne;
}

// The refresh that completes still takes the new tare off the wanted value: the right reading
// comes with the next one.
void Capteur::AvanceLaTare(Passe& passe) {
  if (!AccumuleMAV(mdblValeurCourante, mdblValeurApresTarage, mlngNbLecturePourRAZ,
                   passe.dblMoyenne)) {
    return;
  }
  ValeurTare_ = passe.dblMoyenne;
  mdblValeurCourante = mdblValeurApresTarage;
  EtatMaxi_ = ENUM_ETAT_CAPTEUR::Correct;
  EtatDeLaTare_ = true;
}

}  // namespace zuma
