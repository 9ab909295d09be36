// The refresh pass.
#include <limits>

#include "base/en_cours.h"
#include "base/garde.h"
#include "core/chassis.h"
#include "core/ordre_des_cartes.h"

namespace zuma {
namespace {

constexpr double kMicrosecondes = 1'000'000;
// Lag beyond which a lost schedule is not repaid, in seconds. EA differs from the others.
constexpr double kRetardEA = 0.5;
constexpr double kRetardEL = 1.0;
constexpr double kRetardWD = 1.0;

// True when the rate is due. Below the lag limit the mark moves by one period, so that a slow host
// is repaid; past it the mark jumps one period ahead of the clock.
bool EstDue(double heure, double fréquence, double retard, double& marque) {
  if (!(heure > marque + 1 / fréquence)) return false;
  const double départ = marque + retard < heure ? heure : marque;
  marque = départ + 1 / fréquence;
  return true;
}

bool SeRafraîchitSeule(const Commande& commande) {
  return !(commande.Enabled() && commande.FréquenceDither() == 0 &&
           commande.TypeCommande() != ENUM_TYPE_COMMANDE::Recopie);
}

}  // namespace

Chassis::Dues Chassis::CalculeLesDues() {
  Dues dues;
  dues.ea = EstDue(Heure, mdblFréquenceEA, kRetardEA, HeurePrécédenteMàJEA);
  dues.el = EstDue(Heure, mdblFréquenceEL, kRetardEL, HeurePrécédenteMàJEL);
  dues.wd = EstDue(Heure, mdblFréquenceWD, kRetardWD, HeurePrécédenteMàJWD);
  return dues;
}

void Chassis::ExigeUnRafraîchissement() {
  HeurePrécédenteMàJEA = HeurePrécédenteMàJEL = -std::numeric_limits<double>::infinity();
}

void Chassis::MetàJour() {
  const EnCours passe(LaPlateforme().échecs.enPasse);
  Garde(
      *this, Forme::Méthode, "MetàJour",
      [&] {
        typeEnMain_.reset();
        Heure = Timer()->LitMicrosecondes() / kMicrosecondes;
        LaPlateforme().heureDePasse = Heure;
        const Dues dues = CalculeLesDues();
        // A handler may change the frame: the pass ends on what it began with.
        const auto commandes = OuVide(Commandes_)->Photo();
        const auto cartes = OuVide(Cartes_)->Photo();
        const auto capteurs = OuVide(Capteurs_)->Photo();
        const auto entrées = OuVide(EntréesLogiques_)->Photo();
        for (const CommandeRef& commande : commandes) {
          if (SeRafraîchitSeule(*commande)) commande->MetàJour();
        }
        if (dues.wd) SertLeWatchdog();
        ParAttente(cartes, [&](Carte& carte) { SertLaCarte(carte, dues); });
        if (dues.ea) {
          for (const CapteurRef& capteur : capteurs) capteur->MetàJour();
          ++rafraichissementsEA_;
        }
        if (dues.el) {
          for (const EntréeLogiqueRef& entrée : entrées) entrée->MetàJour();
        }
        SurveilleLesLectures(cartes);
      },
      [&](Variables& v) { RemplitLesVariables(v); }, SansErreur::Montre);
}

// The first pass only sets the clock: nothing was read before it.
void Chassis::SurveilleLesLectures(std::span<const CarteRef> cartes) {
  constexpr double kPériode = 0.5;  // seconds
  const bool due = prochaineSurveillance_ && Heure > *prochaineSurveillance_;
  if (prochaineSurveillance_ && !due) return;
  prochaineSurveillance_ = Heure + kPériode;
  if (!due) return;
  LaPlateforme().échecs.Examine(Heure);
  for (const CarteRef& carte : cartes) {
    if (!carte->Fonctions()) continue;
    for (const FonctionRef& bloc : carte->LesFonctions()) bloc->SurveilleSesLectures();
  }
}

void Chassis::SertLeWatchdog() {
  const WatchdogRef watchdog = Watchdog();
  if (watchdog->SortiePulse() || (watchdog->Adresse() != 0 && watchdog->Temps() != 0)) {
    watchdog->MetàJour();
  }
}

void Chassis::SertLaCarte(Carte& carte, const Dues& dues) {
  switch (carte.Service()) {
    case ServiceCarte::BusSimple:
    case ServiceCarte::BusAvecSuivante:
      carte.SertLeBus(typeEnMain_);
      break;
    case ServiceCarte::CarteEntière:
      carte.MetàJour();
      break;
    case ServiceCarte::ParFonction:
      for (const FonctionRef& fonction : carte.LesFonctions()) {
        const ENUM_TYPE_FONCTION type = fonction->TypeDeFonction();
        typeEnMain_ = type;
        if ((dues.el && type == ENUM_TYPE_FONCTION::FctEntréesLogiques) ||
            (dues.ea && type == ENUM_TYPE_FONCTION::FctEntréesAnalogiques)) {
          fonction->MetàJour();
        }
      }
      typeEnMain_.reset();
      break;
  }
}

void Chassis::RemplitLesVariables(Variables& v) const {
  v.Ajoute("Heure", Heure);
  v.Ajoute("HeurePrécédenteMàJEA", HeurePrécédenteMàJEA);
  v.Ajoute("mdblFréquenceEA", mdblFréquenceEA);
  v.Ajoute("HeurePrécédenteMàJSA", HeurePrécédenteMàJSA);
  v.Ajoute("mdblFréquenceSA", mdblFréquenceSA);
  v.Ajoute("HeurePrécédenteMàJEL", HeurePrécédenteMàJEL);
  v.Ajoute("mdblFréquenceEL", mdblFréquenceEL);
  v.Ajoute("HeurePrécédenteMàJSL", HeurePrécédenteMàJSL);
  v.Ajoute("mdblFréquenceSL", mdblFréquenceSL);
  if (typeEnMain_) {
    v.Ajoute("objFonction.TypeDeFonction", static_cast<std::int32_t>(*typeEnMain_));
  } else {
    v.AjouteVide();
  }
}

}  // namespace zuma
