// Section of the specimen and stress, from the shared parameters that the operator edits.
#include "base/garde.h"
#include "sensors/capteur_genres.h"
#include "sensors/contrainte.h"
#include "sensors/section.h"
#include "sensors/textes_eprouvette.h"

namespace zuma {

using P = ParamEprouvette;

double Capteur::ContrainteDepuisForce(double force, double surface) const {
  return contrainte::DepuisForce(force, surface, paramètres_.NombreSûr(P::C));
}

double Capteur::ConvertionContrainteForce(double Contrainte_dbl) {
  return Garde(*this, Forme::Méthode, "ConvertionContrainteForce", [&] {
    return contrainte::VersForce(Contrainte_dbl, mdblSurfaceCalculée, paramètres_.NombreSûr(P::C));
  });
}

double Capteur::dblSurfaceContrainte() {
  return Garde(*this, Forme::Lecture, "dblSurfaceContrainte",
               [&] { return paramètres_.Nombre(P::S); });
}

void Capteur::dblSurfaceContrainte(double surface) {
  Garde(*this, Forme::Ecriture, "dblSurfaceContrainte",
        [&] { paramètres_[P::S]->ValeurParamètre(EnTexte(surface)); });
}

// The section is kept before it is written back: a parameter changed in answer to that computes it
// again from inside, and the newest must remain.
void Capteur::CalculeSurface() {
  double kLongueur = 0;
  const bool possible =
      paramètres_[P::TypeDeCalcul] && paramètres_[P::FormeEprouvette] && Traducteur_obj_;
  const double section = possible ? SectionDeLEprouvette(kLongueur) : 0;
  if (!paramètres_[P::S] || kLongueur == 0) {
    mdblSurfaceCalculée = section;
    return;
  }
  const double k2 = kLongueur * kLongueur;
  const double inscrite = paramètres_.Nombre(P::S);
  mdblSurfaceCalculée = section;
  if (inscrite * k2 != section) ReporteLaSection(inscrite, section / k2);
}

// The text holds fewer digits than the number: what reads back equal is not written again. Two
// sensors that share "S" must not answer each other for ever, so a computation from inside the
// write-back writes nothing.
void Capteur::ReporteLaSection(double inscrite, double section) {
  const std::string texte = EnTexte(section);
  if (reporteLaSection_ || VersDouble(Valeur(texte)) == inscrite) return;
  const EnCours report(reporteLaSection_);
  paramètres_[P::S]->ValeurParamètre(texte);
}

double Capteur::SectionDeLEprouvette(double& kLongueur) {
  const auto nombre = [&](P rang) { return paramètres_.NombreSûr(rang).value_or(0); };
  const auto facteur = [&](P rang) {
    return paramètres_[rang] ? section::CoefficientUnité(paramètres_.Texte(rang)) : 1;
  };
  const auto texte = [&](P rang) { return std::string(paramètres_.Texte(rang)); };
  section::Eprouvette e;
  e.essai = TypeContrainteDepuisTexte(texte(P::TypeDeCalcul));
  e.forme = FormeDepuisTexte(texte(P::FormeEprouvette));
  if (paramètres_[P::MethodeCalculDeSurface]) {
    e.méthode = MéthodeSurfaceDepuisTexte(texte(P::MethodeCalculDeSurface));
  }
  e.A = nombre(P::A);
  e.B = nombre(P::B);
  e.D = nombre(P::D);
  e.E = nombre(P::E);
  e.H = nombre(P::H);
  e.L = nombre(P::L);
  e.S = nombre(P::S);
  e.Grand_L = nombre(P::Grand_L);
  e.Petit_L = nombre(P::Petit_L);
  e.masse = nombre(P::M);
  e.masseVolumique = nombre(P::MasseVolumique);
  e.kMasse = facteur(P::UniteMasse);
  e.kMasseVolumique = facteur(P::UniteMasseVolumique);
  e.kLongueur = kLongueur = facteur(P::UniteLongueur);
  return section::Calcule(e);
}

ENUM_TYPE_CONTRAINTE Capteur::TypeContrainteDepuisTexte(const std::string& texte) {
  const auto type = textes_eprouvette::TypeContrainte(texte, Traducteur_obj_);
  if (!type) Montre("Strength type unknown (" + texte + ").");
  return type.value_or(ENUM_TYPE_CONTRAINTE::surface);
}

ENUM_FORME_EPROUVETTE Capteur::FormeDepuisTexte(const std::string& texte) {
  const auto forme = textes_eprouvette::Forme(texte, Traducteur_obj_);
  if (!forme) Montre("Unknown shape of sample (" + texte + ").");
  return forme.value_or(ENUM_FORME_EPROUVETTE::Inconnue);
}

ENUM_TYPE_CALCUL_SURFACE Capteur::MéthodeSurfaceDepuisTexte(const std::string& texte) {
  const auto méthode = textes_eprouvette::Méthode(texte, Traducteur_obj_);
  if (!méthode) Montre("Unknown surface calculation method (" + texte + ").");
  return méthode.value_or(ENUM_TYPE_CALCUL_SURFACE::Dimension);
}

ENUM_TYPE_CONTRAINTE Capteur::TypeCalculContrainte() {
  return Garde(*this, Forme::Lecture, "TypeCalculContrainte", [&] {
    const std::string texte(paramètres_.Texte(P::TypeDeCalcul));
    const ENUM_TYPE_CONTRAINTE type = TypeContrainteDepuisTexte(texte);
    if (textes_eprouvette::EstObsolète(texte)) {
      Montre("'" + texte +
             "' est un type de calcul obsolete. Veuillez apporter les correction nécessaire dans "
             "le capteur '" +
             mstrNom + "'.");
    }
    return type;
  });
}

void Capteur::TypeCalculContrainte(ENUM_TYPE_CONTRAINTE type) {
  Garde(*this, Forme::Ecriture, "TypeCalculContrainte", [&] {
    const auto mot = textes_eprouvette::MotDeContrainte(type);
    if (!mot) return;
    // Only this one is written in the operator's language.
    const bool traduit = type == ENUM_TYPE_CONTRAINTE::Flexion;
    paramètres_[P::TypeDeCalcul]->ValeurParamètre(traduit ? Traducteur_obj_->Traduit(*mot)
                                                          : std::string(*mot));
  });
}

}  // namespace zuma
