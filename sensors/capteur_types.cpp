// Sensors made from other sensors or from the clock.
#include <array>

#include "sensors/capteur_genres.h"

namespace zuma {
namespace {

constexpr double kMicrosecondes = 1'000'000;

struct UnitéDeTemps {
  std::string_view texte;
  double microsecondes;
};
constexpr std::array<UnitéDeTemps, 5> kUnitésDeTemps{{
    {"H", 60 * 60 * kMicrosecondes},
    {"MN", 60 * kMicrosecondes},
    {"S", kMicrosecondes},
    {"MS", 1000},
    {"µS", 1},
}};

// What a combination makes of its children's values, given in their order.
double Somme(const Capteurs& fils) {
  double somme = 0;
  for (const CapteurRef& f : fils) somme += f->ValeurCourante();
  return somme;
}

double Produit(const Capteurs& fils) {
  double produit = 1;
  for (const CapteurRef& f : fils) produit *= f->ValeurCourante();
  return produit;
}

}  // namespace

/// One operator of a combination.
struct Capteur::Calcul::Opération {
  std::string_view opérateur;
  double (*combine)(Capteur& c);
};

// More than two children count for "+" and "*" alone.
double Capteur::Calcul::Différence(Capteur& c) {
  if (c.CapteursFils_->Count() == 1) return -c.Fils(0)->ValeurCourante();
  return c.Fils(0)->ValeurCourante() - c.Fils(1)->ValeurCourante();
}

double Capteur::Calcul::Quotient(Capteur& c) {
  if (c.CapteursFils_->Count() == 1) return Divise(1, c.Fils(0)->ValeurCourante());
  const double diviseur = c.Fils(1)->ValeurCourante();
  return diviseur == 0 ? 0 : c.Fils(0)->ValeurCourante() / diviseur;
}

void Capteur::Calcul::Combinaison(Capteur& c, Passe&) {
  static constexpr std::array<Opération, 4> kOpérations{{
      {"+", [](Capteur& s) { return Somme(*s.CapteursFils_); }},
      {"-", &Différence},
      {"*", [](Capteur& s) { return Produit(*s.CapteursFils_); }},
      {"/", &Quotient},
  }};
  if (c.CapteursFils_->Count() == 0) {
    c.mdblValeurCourante = 0;
    return;
  }
  for (const Opération& opération : kOpérations) {
    if (c.Operateur_str_ == opération.opérateur) c.mdblValeurCourante = opération.combine(c);
  }
}

void Capteur::Calcul::Moyen(Capteur& c, Passe& passe) {
  const std::int32_t nombre = c.CapteursFils_->Count();
  if (nombre == 0) return;
  passe.dblMoyenne = Somme(*c.CapteursFils_) / nombre;
  c.mdblValeurCourante = passe.dblMoyenne;
}

void Capteur::Calcul::Contrainte(Capteur& c, Passe&) {
  c.mdblValeurCourante =
      c.CapteursFils_->Count() == 0
          ? 0
          : c.ContrainteDepuisForce(c.Fils(0)->ValeurCourante(), c.mdblSurfaceCalculée);
}

// Any other unit leaves the value as it was.
void Capteur::Calcul::Temps(Capteur& c, Passe&) {
  const double t = c.Timer()->LitMicrosecondes() - c.mdblDépartCapteurTemps - c.ValeurDeRAZ_mdbl;
  for (const UnitéDeTemps& unité : kUnitésDeTemps) {
    if (MêmeClé(c.UnitéEtalonnage_, unité.texte)) c.mdblValeurCourante = t / unité.microsecondes;
  }
}

void Capteur::Calcul::Vitesse(Capteur& c, Passe&) {
  if (c.CapteursFils_->Count() == 0) return;
  if (!c.régression_) VideLaRégression(c);
  const double v = c.Fils(0)->ValeurCourante();
  const double t = c.Timer()->LitMicrosecondes() / kMicrosecondes;
  const auto pente =
      c.régression_->Ajoute(t, v, c.mdblFréquenceRafraichissement * c.mdblTempsCalculVitesse);
  if (pente) c.mdblValeurCourante = *pente;
}

// Parameter "S" holds the reference length here.
void Capteur::Calcul::DeltaL(Capteur& c, Passe&) {
  const bool possible = c.CapteursFils_->Count() != 0 && c.paramètres_[ParamEprouvette::S];
  const double longueur = possible ? c.paramètres_.Nombre(ParamEprouvette::S) : 0;
  c.mdblValeurCourante = longueur == 0 ? 0 : c.Fils(0)->ValeurCourante() / longueur * kPourCent;
}

void Capteur::Calcul::Selectionnable(Capteur& c, Passe&) {
  if (c.CapteursFils_->Count() == 0 || !c.paramètres_[ParamEprouvette::S]) return;
  const CapteurRef fils = c.FilsOuRien(0);
  if (!fils) return;
  const auto choisi = c.paramètres_.NombreSûr(ParamEprouvette::S);
  double attendu = 0;
  const bool égal = choisi && LitNombre(c.mstrValeurSelection, attendu) && *choisi == attendu;
  c.mdblValeurCourante = égal ? fils->ValeurCourante() : 0;
}

// The selected child with the smallest range lends its limits along with its value.
void Capteur::Calcul::LePlusPetit(Capteur& c, Passe&) {
  const Capteur* petit = nullptr;
  for (const CapteurRef& fils : *c.CapteursFils_) {
    if (!fils->CapteurSelectionne()) continue;
    if (petit == nullptr || fils->MaxiCapteurUnité() < petit->MaxiCapteurUnité()) {
      petit = fils.Brut();
    }
  }
  c.mdblValeurCourante = 0;
  if (petit == nullptr) return;
  c.mdblSécuritéMaxiEnUnité = petit->MaxiCapteurUnité();
  c.mdblSécuritéMiniEnUnité = petit->MiniCapteurUnité();
  c.mdblValeurCourante = petit->ValeurCourante();
}

}  // namespace zuma
