// Plain properties of a sensor.
#include "sensors/capteur.h"

#include <algorithm>
#include <array>

#include "base/garde.h"
#include "base/outils_communs.h"
#include "sensors/capteur_genres.h"

namespace zuma {

Capteur::~Capteur() {
  (void)Capteur::ResetFeuilleEtalonnage();
}

// A form that is still on the screen goes too: it would not hear of the end of its object.
Valeur Capteur::ResetFeuilleEtalonnage() {
  const auto feuille = std::exchange(mobjFeuilleEtalonnage, nullptr);
  if (feuille) feuille->OublieSonObjet();
  return {};
}

Valeur Capteur::EtalonnageExterieur(FenêtreHôte* FeuilleMere_obj) {
  return Garde(*this, Forme::Méthode, "EtalonnageExterieur", [&]() -> Valeur {
    if (!EtalonnageExterieurPossible_) return {};
    LaPlateforme().fenêtres->Etalonne(*this,
                                      {mobjFeuilleEtalonnage, Traducteur_obj_, FeuilleMere_obj});
    return {};
  });
}

Capteur::Capteur(Plateforme& plateforme) : Objet(plateforme, "Capteur") {
  TypeDeCapteur(ENUM_TYPE_CAPTEUR::capteurNormal);
}

void Capteur::TypeDeCapteur(ENUM_TYPE_CAPTEUR type) {
  musrTypeDeCapteur = type;
  genre_ = Genre::De(type);
  estNormal_ = type == ENUM_TYPE_CAPTEUR::capteurNormal;
}

Valeur Capteur::AutoriseAU() {
  mblnAutoriseAU = true;
  return {};
}

Valeur Capteur::InterditAU() {
  mblnAutoriseAU = false;
  return {};
}

void Capteur::AutoriseDétectionMaxi(bool autorise) {
  AutoriseDétectionMaxi_ = autorise;
  if (autorise) mdblMaxiDétecté = mdblValeurCourante;
}

CapteurRef Capteur::Fils(std::size_t rang) const {
  static constexpr std::array<std::string_view, 2> kClés{"1", "2"};
  return CapteursFils_->Item(kClés[rang]);
}

// The collection tells an absent key by a failure only.
CapteurRef Capteur::FilsOuRien(std::size_t rang) const {
  try {
    return Fils(rang);
  } catch (const Echec&) {
    return {};
  }
}

// In a circle of sensors what goes down to the children would never end: it fails.
EnCours Capteur::Descend() const {
  if (descend_) {
    throw Echec(Numéro::AppelIncorrect,
                DescriptionDEchec(Numéro::AppelIncorrect) + " : le capteur est son propre fils");
  }
  return EnCours(descend_);
}

void Capteur::Délie() noexcept {
  CapteursFils_ = nullptr;
  paramètres_.Délie();
}

void Capteur::Enabled_bln(bool enService) {
  Garde(*this, Forme::Ecriture, "Enabled_bln", [&] {
    Enabled_bln_ = enService;
    if (!enService || !CapteursFils_) return;
    const EnCours descente = Descend();
    for (const CapteurRef& fils : *CapteursFils_) fils->Enabled_bln(true);
  });
}

double Capteur::MiniCapteurPoints() const {
  return Garde(*this, Forme::Lecture, "MiniCapteurPoints",
               [&] { return table_.VersUnités(mdblSécuritéMiniEnPoints); });
}

double Capteur::MaxiCapteurPoints() const {
  return Garde(*this, Forme::Lecture, "MaxiCapteurPoints",
               [&] { return table_.VersUnités(mdblSécuritéMaxiEnPoints); });
}

double Capteur::PointX(std::int16_t intIndex) const {
  return Garde(*this, Forme::Lecture, "PointX", [&] { return table_.PointX(intIndex); });
}
double Capteur::PointY(std::int16_t intIndex) const {
  return Garde(*this, Forme::Lecture, "PointY", [&] { return table_.PointY(intIndex); });
}
void Capteur::PointY(std::int16_t intIndex, double points) {
  Garde(*this, Forme::Ecriture, "PointY", [&] { table_.PointY(intIndex, points); });
}
void Capteur::PointX(std::int16_t intIndex, double unités) {
  Garde(*this, Forme::Ecriture, "PointX", [&] { table_.PointX(intIndex, unités); });
}

void Capteur::UnitéEtalonnage(const std::string& unité) {
  Garde(*this, Forme::Ecriture, "UnitéEtalonnage", [&] {
    UnitéEtalonnage_ = unité;
    UnitChange_.Lève(unité);
  });
}

void Capteur::TesteAU(std::span<std::string> TableAUs) {
  Garde(*this, Forme::Méthode, "TesteAU", [&] {
    if (!AU() || TableAUs.empty()) return;
    const auto entrées = TableAUs.subspan(1);
    const auto libre = std::ranges::find_if(entrées, &std::string::empty);
    if (libre == entrées.end()) return;
    *libre = tropVieux_ ? CauseDeLAge()
                        : "Dépassement des limites du " + mstrNom +
                              ". Valeur courante en unité : " + EnTexte(mdblValeurCourante);
  });
}

std::string Capteur::EnTexte(double nombre) const {
  return OutilsCommuns::FormateNombre(Valeur(nombre), LaPlateforme().réglages.séparateurDécimal);
}

}  // namespace zuma
