// Overlap of a small and a large sensor on one quantity.
#include <cmath>

#include "base/garde.h"
#include "sensors/capteur_genres.h"

namespace zuma {
namespace {

RECOUVREMENT_ETAT Position(double v, double seuilBas, double seuilHaut) {
  if (v < seuilBas) return RECOUVREMENT_ETAT::InferieurSeuilBas;
  return v <= seuilHaut ? RECOUVREMENT_ETAT::EntreLesSeuils : RECOUVREMENT_ETAT::SuperieurSeuilHaut;
}

double Ecart(const Capteur& petit, const Capteur& grand) {
  return grand.ValeurCourante() - petit.ValeurCourante();
}

}  // namespace

void Capteur::PrépareLeRecouvrement() {
  const bool premierGrand =
      CapteursFils_->Item("1")->MaxiCapteur() > CapteursFils_->Item("2")->MaxiCapteur();
  GrandCapteur_str_ = premierGrand ? "1" : "2";
  PetitCapteur_str_ = premierGrand ? "2" : "1";
  SeuilBasUC_dbl_ = PetitCapteur()->MaxiCapteur() * mdblSeuilBasPourCent / kPourCent;
  SeuilHautUC_dbl_ = PetitCapteur()->MaxiCapteur() * mdblSeuilHautPourCent / kPourCent;
  musrEtatRecouvrement = RECOUVREMENT_ETAT::InferieurSeuilBas;
}

// Children that are made from others find their limits in their own link, which may come after that
// of this sensor: they are compared again behind the sort. Nothing on a sensor that its link could
// not prepare.
void Capteur::ReprendLesLimitesDesFils() {
  Garde(*this, Forme::Procédure, "Lien", [&] {
    if (!PetitCapteur_str_.empty()) PrépareLeRecouvrement();
  });
}

CapteurRef Capteur::PetitCapteur() const {
  return CapteursFils_->Item(PetitCapteur_str_);
}

void Capteur::Calcul::Recouvrement(Capteur& c, Passe&) {
  c.mdblValeurCourante = c.RecouvrementLecture(
      c.CapteursFils_, c.CapteurCourant_str_, c.GrandCapteur_str_, c.PetitCapteur_str_,
      c.SeuilBasUC_dbl_, c.SeuilHautUC_dbl_, c.EcartMoyen_dbl_, c.NbValeurLues_lng_);
}

double Capteur::RecouvrementLecture(const CapteursRef& CapteursFils_cobj,
                                    std::string& CapteurCourant_str,
                                    const std::string& GrandCapteur_str,
                                    const std::string& PetitCapteur_str, double SeuilBasUC_dbl,
                                    double SeuilHautUC_dbl, double& EcartMoyen_dbl,
                                    std::int32_t& NbValeurLues_lng) {
  return Garde(*this, Forme::Méthode, "RecouvrementLecture", [&] {
    const CapteurRef petit = CapteursFils_cobj->Item(PetitCapteur_str);
    RECOUVREMENT_ETAT position = Position(petit->ValeurCourante(), SeuilBasUC_dbl, SeuilHautUC_dbl);
    if (position != RECOUVREMENT_ETAT::EntreLesSeuils) {
      const bool bas = position == RECOUVREMENT_ETAT::InferieurSeuilBas;
      RecouvrementChangementCapteur(CapteursFils_cobj, CapteurCourant_str,
                                    bas ? PetitCapteur_str : GrandCapteur_str, PetitCapteur_str,
                                    GrandCapteur_str, EcartMoyen_dbl, NbValeurLues_lng);
    } else if (musrEtatRecouvrement == RECOUVREMENT_ETAT::EntreLesSeuils) {
      RecouvrementAcquisistion(petit, CapteursFils_cobj->Item(GrandCapteur_str));
    } else {
      RecouvrementInitAcquisistion(petit, CapteursFils_cobj->Item(GrandCapteur_str));
      if (NbValeurLues_lng_ == 0) position = musrEtatRecouvrement;  // to begin with the next one
    }
    musrEtatRecouvrement = position;
    return CapteursFils_cobj->Item(CapteurCourant_str)->ValeurCourante();
  });
}

// A gap that is no number is neither learned nor counted, in both: one such reading would undo the
// correction for good. When it is the first one, the next reading begins the count.
void Capteur::RecouvrementInitAcquisistion(const CapteurRef& PetitCapteur_obj,
                                           const CapteurRef& GrandCapteur_obj) {
  Garde(*this, Forme::Méthode, "RecouvrementInitAcquisistion", [&] {
    NbValeurLues_lng_ = 0;
    const double écart = Ecart(*PetitCapteur_obj, *GrandCapteur_obj);
    if (!std::isfinite(écart)) return;
    EcartMoyen_dbl_ = écart;
    NbValeurLues_lng_ = 1;
  });
}

void Capteur::RecouvrementAcquisistion(const CapteurRef& PetitCapteur_obj,
                                       const CapteurRef& GrandCapteur_obj) {
  Garde(*this, Forme::Méthode, "RecouvrementAcquisistion", [&] {
    const double écart = Ecart(*PetitCapteur_obj, *GrandCapteur_obj);
    if (!std::isfinite(écart)) return;
    EcartMoyen_dbl_ = (écart + EcartMoyen_dbl_) / 2;
    // One more than the minimum is as good as many.
    NbValeurLues_lng_ =
        NbValeurLues_lng_ >= mlngNbValeursMini ? mlngNbValeursMini + 1 : NbValeurLues_lng_ + 1;
  });
}

void Capteur::RecouvrementChangementCapteur(const CapteursRef& LesCapteurs_cobj,
                                            std::string& CapteurCourant_str,
                                            const std::string& NouveauCapteur_str,
                                            const std::string& PetitCapteur_str,
                                            const std::string& GrandCapteur_str,
                                            double EcartMoyen_dbl,
                                            std::int32_t NombreDeValeursLues_lng) {
  Garde(*this, Forme::Méthode, "RecouvrementChangementCapteur", [&] {
    if (NouveauCapteur_str == CapteurCourant_str) return;
    const CapteurRef grand = LesCapteurs_cobj->Item(GrandCapteur_str);
    const bool versPetit = NouveauCapteur_str == PetitCapteur_str;
    if (versPetit) grand->ValeurTare(0);
    CapteurCourant_str = NouveauCapteur_str;
    if (versPetit || NombreDeValeursLues_lng < mlngNbValeursMini) return;
    grand->ValeurTare(EcartMoyen_dbl);
    grand->MetàJour();  // so that the corrected value shows in this very refresh
  });
}

void Capteur::GestionRecouvrement() {
  Garde(*this, Forme::Méthode, "GestionRecouvrement", [&] {
    const RECOUVREMENT_ETAT position =
        Position(mdblValeurCourante, SeuilBasUC_dbl_, SeuilHautUC_dbl_);
    // Only a jump over the whole band switches.
    const bool descend = position == RECOUVREMENT_ETAT::InferieurSeuilBas &&
                         musrEtatRecouvrement == RECOUVREMENT_ETAT::SuperieurSeuilHaut;
    const bool monte = position == RECOUVREMENT_ETAT::SuperieurSeuilHaut &&
                       musrEtatRecouvrement == RECOUVREMENT_ETAT::InferieurSeuilBas;
    if (descend) CapteurCourant_str_ = PetitCapteur_str_;
    if (monte) CapteurCourant_str_ = GrandCapteur_str_;
    musrEtatRecouvrement = position;
  });
}

}  // namespace zuma
