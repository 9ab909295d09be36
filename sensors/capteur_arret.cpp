// The stop that a sensor fires, and its cause in words.
#include "sensors/capteur_genres.h"

namespace zuma {

void Capteur::SortDesLimites() {
  if (EtalonnageExterieurPossible_) return;
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
