// References of a sensor to the other objects, and what follows from them before the first
// refresh.
#include <array>
#include <string>

#include "base/garde.h"
#include "core/recherche.h"
#include "logic/entree_logique.h"
#include "sensors/capteur_genres.h"

namespace zuma {
namespace {

std::string Introuvable(std::string_view nom, std::string_view quoi, std::string_view référence,
                        std::string_view fin = "' qui n'a pas été trouvée.") {
  std::string texte = "Attention : Le capteur '";
  texte.append(nom).append(quoi).append(référence).append(fin);
  return texte;
}

}  // namespace

void Capteur::Lien(const Ref<ZED_Securite>& MaSecurite_obj, const ParamètresRef& MesParametres_mobj,
                   const Ref<ZED_Traduction>& Traducteur_obj, Chassis* MonChassis) {
  Garde(*this, Forme::Procédure, "Lien", [&] {
    particulier_ = true;
    // First: a failure among the references must not leave the sensor without its safety object.
    if (MaSecurite_obj) MaSecurite_obj_ = MaSecurite_obj;
    if (Traducteur_obj) Traducteur_obj_ = Traducteur_obj;
    if (MonChassis != nullptr) LieAuChassis(*MonChassis);
    if (MesParametres_mobj) LieLesParamètres(*MesParametres_mobj);
    if (paramètres_[ParamEprouvette::S] && CapteursFils_) DéduitLesLimites();
    if (musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurRecouvrement && CapteursFils_) {
      PrépareLeRecouvrement();
    }
    CalculeSurface();
  });
}

void Capteur::LieAuChassis(Chassis& chassis) {
  if (!mstrLabelELSelection.empty()) {
    const EntréeLogiqueRef entrée = recherche::EntréeLogiqueDeLabel(chassis, mstrLabelELSelection);
    if (entrée) {
      mobjELSelection = entrée;
    } else {
      Montre(Introuvable(mstrNom, "' utilise l'entrée logique de sélection ayant le label '",
                         mstrLabelELSelection));
    }
  }
  LieLesFils(chassis);
  if (mlngIndexCanal == 0) return;
  const std::string clé = std::to_string(mlngIndexCanal);
  const CanalRef canal = recherche::CanalDeClé(chassis, clé);
  if (canal) {
    mobjCanal = canal;
  } else {
    Montre(Introuvable(mstrNom, "' utilise un canal d'index '", clé, "' qui n'a pas été trouvé."));
  }
}

// A child that is not found leaves a gap in the keys.
void Capteur::LieLesFils(Chassis& chassis) {
  CapteursFils(Crée<Capteurs>(LaPlateforme()));
  for (std::size_t i = 0; i < mastrLabelsFils.size(); ++i) {
    const CapteurRef fils = recherche::CapteurDeLabel(chassis, mastrLabelsFils[i]);
    if (fils) {
      CapteursFils_->Référence(fils, std::to_string(i + 1));
    } else {
      Montre(
          Introuvable(mstrNom, "' utilise un capteur fils ayant le label '", mastrLabelsFils[i]));
    }
  }
}

void Capteur::LieLesParamètres(const ParamètresPartagés& partagés) {
  paramètres_.Lie(
      partagés,
      [&](const LigneParamètre& ligne, std::int32_t index) {
        const std::string quoi =
            "' utilise un paramètre '" + std::string(ligne.message) + "' d'index '";
        Montre(Introuvable(mstrNom, quoi, std::to_string(index)));
      },
      [this](const LigneParamètre& ligne) {
        Garde(*this, Forme::Méthode, ligne.gestionnaire, [&] { CalculeSurface(); });
      });
}

void Capteur::DéduitLesLimites() {
  if (!AutoriseDétectionMaxi_) return;
  const std::int32_t nombre = CapteursFils_->Count();
  if (musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurContrainte && nombre >= 1) {
    const double surface = paramètres_.Nombre(ParamEprouvette::S);
    MaxiCapteur_ = ContrainteDepuisForce(Fils(0)->MaxiCapteur(), surface);
    MiniCapteur_ = ContrainteDepuisForce(Fils(0)->MiniCapteur(), surface);
  } else if (musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurDeltaL && nombre >= 1) {
    // A ratio, where value and maximum are in percent: hosts count on it.
    const double longueur = paramètres_.Nombre(ParamEprouvette::S);
    if (longueur == 0) return;
    MaxiCapteur_ = Fils(0)->MaxiCapteur() / longueur;
    MiniCapteur_ = Fils(0)->MiniCapteur() / longueur;
  } else if (musrTypeDeCapteur == ENUM_TYPE_CAPTEUR::CapteurRecouvrement && nombre >= 2) {
    // The names are only known after the first link, so that this fails then: an overlap sensor
    // is to be configured without parameter "S".
    const CapteurRef petit = CapteursFils_->Item(PetitCapteur_str_);
    mdblSeuilDeLectureNonValide = petit->SeuillLectureNonValide();
    MaxiCapteur_ = CapteursFils_->Item(GrandCapteur_str_)->MaxiCapteur();
    MiniCapteur_ = petit->MiniCapteur();
  }
}

// A zero or tare that runs is measured anew: readings of before the start would stay in the mean.
void Capteur::Initialise() {
  Garde(
      *this, Forme::Méthode, "Initialise",
      [&] {
        particulier_ = mobjELSelection || paramètres_[ParamEprouvette::Sélection] ||
                       paramètres_[ParamEprouvette::Offset] || mdblSeuilDeLectureNonValide != 0 ||
                       mdblAgeMaximal > 0;
        mintNbLectureEffectuées = 0;
        mdblSommeCanalPourMAV = 0;
        heureDeMesure_ = LaPlateforme().heureDePasse;
        if (genre_ != nullptr && genre_->démarre != nullptr) genre_->démarre(*this);
      },
      [&](Variables& v) {
        v.Ajoute("mdblSécuritéMaxiEnUnité", mdblSécuritéMaxiEnUnité);
        v.Ajoute("mdblSécuritéMaxiEnPoints", mdblSécuritéMaxiEnPoints);
        v.Ajoute("mdblSécuritéMiniEnUnité", mdblSécuritéMiniEnUnité);
        v.Ajoute("mdblSécuritéMiniEnPoints", mdblSécuritéMiniEnPoints);
        v.Ajoute("mdblDépartCapteurTemps", mdblDépartCapteurTemps);
      });
}

void Capteur::Calcul::PrendLesLimites(Capteur& c) {
  c.MaxiCapteur_ = c.mdblSécuritéMaxiEnUnité;
  c.MiniCapteur_ = c.mdblSécuritéMiniEnUnité;
}

void Capteur::Calcul::DémarreLaMontre(Capteur& c) {
  c.mdblDépartCapteurTemps = c.Timer()->LitMicrosecondes();
}

void Capteur::Calcul::VideLaRégression(Capteur& c) {
  c.régression_ = std::make_unique<Régression>();
}

void Capteur::Calcul::ContrôleLesUnités(Capteur& c) {
  if (!c.CapteursFils_) return;
  const std::string* unité = nullptr;
  for (const CapteurRef& fils : *c.CapteursFils_) {
    if (unité == nullptr) unité = &fils->UnitéEtalonnage();
    if (fils->UnitéEtalonnage() == *unité) continue;
    c.Montre("Problem on sensor '" + c.mstrNom + "'. Unit of sensors linked are not the same.");
    return;
  }
}

}  // namespace zuma
