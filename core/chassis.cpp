#include "core/chassis.h"

#include "base/garde.h"
#include "base/poursuite.h"
#include "core/ordre_des_cartes.h"

namespace zuma {
namespace {

constexpr double kMicrosecondes = 1'000'000;

}  // namespace

Chassis::~Chassis() {
  Commandes_ = nullptr;
  // Sensors that were never sorted may keep each other, and listen to a host that has gone.
  if (Capteurs_) {
    for (const CapteurRef& capteur : *Capteurs_) capteur->Délie();
  }
  Capteurs_ = nullptr;
  Cartes_ = nullptr;
}

CartesRef Chassis::Cartes() {
  OuVide(Cartes_);
  return Cartes_;
}
CommandesRef Chassis::Commandes() {
  OuVide(Commandes_);
  return Commandes_;
}
WatchdogRef Chassis::Watchdog() {
  OuVide(Watchdog_);
  return Watchdog_;
}
EntréeLogiquesRef Chassis::EntréesLogiques() {
  OuVide(EntréesLogiques_);
  return EntréesLogiques_;
}
EntréeLogiquesRef Chassis::EntréesManuelles() {
  OuVide(EntréesManuelles_);
  return EntréesManuelles_;
}
SortieLogiquesRef Chassis::SortiesLogiques() {
  OuVide(SortiesLogiques_);
  return SortiesLogiques_;
}
CapteursRef Chassis::Capteurs() {
  OuVide(Capteurs_);
  return Capteurs_;
}

Valeur Chassis::Décharge() {
  for (const CarteRef& carte : *Cartes()) {
    for (const FonctionRef& fonction : carte->LesFonctions()) fonction->Décharge();
  }
  for (const CapteurRef& capteur : *Capteurs()) capteur->Décharge();
  // Not in the destructor: who listens to the record may be gone by then.
  LaPlateforme().échecs.Conclut(Erreur());
  return {};
}

void Chassis::TesteAU(std::span<std::string>) {}

void Chassis::DéclencheAU() {
  Garde(*this, Forme::Méthode, "DéclencheAU", [&] {
    // An output that a handler takes away meanwhile is put to rest all the same.
    const auto sorties = SortiesLogiques()->Photo();
    const auto cartes = Cartes()->Photo();
    Poursuite chacun;
    const auto tous = [&](const auto& objets, auto&& pas) {
      for (const auto& objet : objets) chacun([&] { pas(*objet); });
    };
    const auto arrête = [](auto& objet) { objet.DéclencheAU(); };
    tous(*Capteurs(), arrête);
    tous(*Commandes(), arrête);
    tous(sorties, arrête);
    tous(*EntréesLogiques(), arrête);
    chacun([&] { Watchdog()->DéclencheAU(); });
    ParAttente(cartes, [&](Carte& carte) {
      chacun([&] {
        carte.DéclencheAU();
        carte.MetàJour();
      });
    });
    chacun.Termine();
  });
}

std::vector<std::string> Chassis::SortiesNonAtteintes() {
  std::vector<std::string> noms;
  for (const CommandeRef& commande : *Commandes()) {
    if (!commande->Atteinte()) noms.push_back(commande->NomDeLaCommande());
  }
  for (const SortieLogiqueRef& sortie : *SortiesLogiques()) {
    if (!sortie->Atteinte()) noms.push_back(sortie->NomDeLaSortieLogique());
  }
  return noms;
}

void Chassis::MiseàJourDesLiens() {
  Garde(*this, Forme::Méthode, "MiseàJourDesLiens", [&] {
    for (const CapteurRef& capteur : *Capteurs()) capteur->MiseàJourDesLiens();
    for (const CommandeRef& commande : *Commandes()) commande->MiseàJourDesLiens();
    for (const EntréeLogiqueRef& entrée : *EntréesLogiques()) entrée->MiseàJourDesLiens();
    for (const SortieLogiqueRef& sortie : *SortiesLogiques()) sortie->MiseàJourDesLiens();
  });
}

// The start of the boards may have taken seconds, which are no age of a reading.
void Chassis::DateLeDépart() {
  if (!Timer()) return;
  LaPlateforme().heureDePasse = Timer()->LitMicrosecondes() / kMicrosecondes;
  for (const CarteRef& carte : *Cartes()) {
    for (const FonctionRef& bloc : carte->LesFonctions()) {
      const bool logique = bloc->TypeDeFonction() == ENUM_TYPE_FONCTION::FctEntréesLogiques;
      const double fréquence = logique ? mdblFréquenceEL : mdblFréquenceEA;
      for (const CanalRef& canal : bloc->LesCanaux()) {
        canal->RetientLAgeLimite(1 / fréquence);  // a rate of 0 is never due: no limit
        canal->DateLeDépart();
      }
    }
  }
}

void Chassis::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    for (const CarteRef& carte : *Cartes()) {
      carte->Initialise();
      carte->MetàJour();
    }
    DateLeDépart();
    for (const CapteurRef& capteur : *Capteurs()) capteur->Initialise();
    for (const CommandeRef& commande : *Commandes()) {
      commande->Initialise();
      commande->MetàJour();
    }
    for (const EntréeLogiqueRef& entrée : *EntréesLogiques()) entrée->Initialise();
    Watchdog()->Initialise();
    for (const SortieLogiqueRef& sortie : *SortiesLogiques()) sortie->Initialise();
  });
}

}  // namespace zuma
