// A sensor from a channel: zero, integration, calibration, limits and the stop.
#include <algorithm>
#include <cmath>

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

void Capteur::Calcul::Normal(Capteur& c, Passe& passe) {
  c.mdblValeurCouranteEnPoints = c.mobjCanal ? c.mobjCanal->ValeurCanal() : 0;
  if (c.musrOpérationCouranteDeRAZ == ENUM_OPERATION_MAV::Acquisition && !passe.tenue) {
    passe.chacun([&] { c.AvanceLeZéro(passe); });
  }
  c.mdblValeurCouranteEnPoints -= c.ValeurDeRAZ_mdbl;
  c.Intègre(passe);
  const auto contrôle = [&] { passe.chacun([&] { c.ContrôleLesLimites(); }); };
  try {
    c.mdblValeurCourante = c.table_.VersUnités(c.mdblValeurCouranteEnPoints);
  } catch (...) {
    contrôle();  // a table that gives no units leaves the limits in points
    throw;
  }
  contrôle();
}

// First-order filter whose weight follows the actual period of the refresh.
void Capteur::Intègre(Passe& passe) {
  MémoTemps = Timer()->LitMicrosecondes();
  passe.DeltaT = (MémoTemps - mdblAncienTemps) / kMicrosecondes;
  if (passe.DeltaT == 0) passe.DeltaT = mdblTempsIntégration / kPartAuMêmeInstant;
  // A channel that once gave no number must not hold the filter for ever.
  const bool suite = std::isfinite(mdblAncienneValeurEnPoints);
  if (mdblTempsIntégration / kPartFiltrée > passe.DeltaT && passe.DeltaT != 0 && suite) {
    passe.Intégation = std::max(mdblTempsIntégration * kPoids / passe.DeltaT + kPoidsAjouté, 1.0);
    mdblValeurCouranteEnPoints =
        ((passe.Intégation - 1) * mdblAncienneValeurEnPoints + mdblValeurCouranteEnPoints) /
        passe.Intégation;
  }
  mdblAncienneValeurEnPoints = mdblValeurCouranteEnPoints;
  mdblAncienTemps = MémoTemps;
}

// The limits themselves are outside, and so is a value that is no number. The value tested has
// neither tare nor offset in it.
void Capteur::ContrôleLesLimites() {
  const bool dedans = MiniCapteur_ < mdblValeurCourante && mdblValeurCourante < MaxiCapteur_ &&
                      mdblValeurCouranteEnPoints < mdblSécuritéMaxiEnPoints &&
                      mdblSécuritéMiniEnPoints < mdblValeurCouranteEnPoints;
  if (dedans || EtalonnageExterieurPossible_) return;
  if (!mblnArrêtSiDépassement || !mblnAutoriseAU) {
    musrEtat = ENUM_ETAT_CAPTEUR::DépassementNonDangeureux;
    return;
  }
  musrEtat = ENUM_ETAT_CAPTEUR::DépassementDangeureux;
  DéclencheLArrêt(&Capteur::CauseDuDépassement);
}

std::string Capteur::CauseDuDépassement() const {
  return Traduit("Texte depassement dangeureux") + " " + mstrNom +
         Traduit("Texte valeur courante UC") + " " + EnTexte(mdblValeurCourante) +
         UnitéEtalonnage_ + Traduit("Texte valeur courante pts") + " " +
         EnTexte(mdblValeurCouranteEnPoints);
}

// The stop fires on each refresh for as long as its cause lasts. It fires too when the cause
// cannot be worded or kept: that failure is told afterwards.
void Capteur::DéclencheLArrêt(std::string (Capteur::*cause)() const) {
  const Ref<ZED_Securite> sécurité = MaSecurite_obj_;
  try {
    sécurité->PositionneCauseAU((this->*cause)());
  } catch (...) {
    sécurité->DéclencheSécurité();
    throw;
  }
  sécurité->DéclencheSécurité();
}

std::string Capteur::Traduit(std::string_view clé) const {
  return Traducteur_obj_ ? Traducteur_obj_->Traduit(clé) : std::string(clé);
}

}  // namespace zuma
