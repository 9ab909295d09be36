#include "tree/fonction.h"

#include <algorithm>

#include "base/garde.h"
#include "base/lignes.h"
#include "base/requetes.h"
#include "tree/carte.h"

namespace zuma {
namespace {

constexpr std::int16_t kCanalErreur = -1;

}  // namespace

Fonction::~Fonction() {
  vie_.Finit();
  CanalErreurModbus_ = nullptr;
  Canals_ = nullptr;
  if (RS_ && RS_->EtatPort() == 1) RS_->FermePort();
  if (opérations_ != nullptr && opérations_->termineBloc != nullptr) {
    opérations_->termineBloc(*this);
  }
  Décharge();
}

void Fonction::Décharge() {
  if (opérations_ != nullptr && opérations_->fermeBloc != nullptr) opérations_->fermeBloc(*this);
}

void Fonction::DéclencheAU() {
  Garde(*this, Forme::Méthode, "DéclencheAU", [&] {
    for (const CanalRef& canal : *Canals()) canal->DéclencheAU();
  });
}

CanalsRef Fonction::Canals() {
  if (!Canals_) Canals_ = Crée<zuma::Canals>(LaPlateforme());
  return Canals_;
}

void Fonction::ChargeLesCanaux(const Ref<BaseDeDonnées>& dtbMaBase,
                               std::int32_t lngIndexDeLaFonction) {
  Garde(*this, Forme::Méthode, "ChargeLesCanaux", [&] {
    const auto liste = dtbMaBase->OpenRecordset(requêtes::CanauxDe(lngIndexDeLaFonction));
    const auto charge = [&](std::int32_t index) {
      const CanalRef canal = Canals()->Add(std::to_string(index));
      canal->TimerExact(Timer());
      canal->ChargeErreur(Erreur());
      canal->ParamètresDepuisBD(dtbMaBase->OpenRecordset(requêtes::LigneDuCanalDeBloc(index)));
      canal->Parent(this);
      if (canal->NuméroCanal() == kCanalErreur) CanalErreurModbus_ = canal;
    };
    lignes::PourChacune(*this, Forme::Méthode, "ChargeLesCanaux", "Canal", *liste, charge);
  });
}

void Fonction::Parent(Carte* parent) {
  Parent_ = PointeurSuivi<Carte>(parent);
}

void Fonction::Adresse(std::int32_t adresse) {
  Garde(*this, Forme::Ecriture, "Adresse", [&] {
    mlngAdresse = adresse;
    for (const CanalRef& canal : *Canals()) canal->Adresse(adresse);
  });
}

Carte* Fonction::LaCarte() const {
  return &*Parent_;
}

void Fonction::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    if (opérations_ != nullptr) {
      if (opérations_->ouvre != nullptr) {
        pilote_ = {&opérations_->ouvre(*Parent_, Base()), Parent_->LaVie()};
      }
      if (opérations_->démarreBloc != nullptr) opérations_->démarreBloc(*this);
    }
    for (const CanalRef& canal : *Canals()) {
      canal->Initialise();
      mintNbLecture = std::max(mintNbLecture, canal->NbLecture());
    }
  });
}

void Fonction::MetàJour() {
  Garde(
      *this, Forme::Méthode, "MetàJour",
      [&] {
        if (opérations_ != nullptr && opérations_->rafraîchitBloc != nullptr) {
          opérations_->rafraîchitBloc(*this);
        }
      },
      [&](Variables& v) {
        v.Ajoute("musrTypeCanal", static_cast<std::int32_t>(TypeDeFonction_));
        v.Ajoute("musrDriver", static_cast<std::int32_t>(Driver_enm()));
        v.Ajoute("MAJParFonction_mbln", MAJParFonction_mbln);
        v.Ajoute("mintNbLecture", std::int32_t{mintNbLecture});
      });
}

}  // namespace zuma
