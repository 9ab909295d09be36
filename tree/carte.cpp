#include "tree/carte.h"

#include <algorithm>
#include <utility>

#include "base/garde.h"
#include "base/lignes.h"
#include "base/poursuite.h"
#include "base/requetes.h"
#include "tree/journal_modbus.h"

namespace zuma {

Carte::Carte(Plateforme& plateforme) : Objet(plateforme, "Carte") {
  if (plateforme.fichiers) plateforme.fichiers->Supprime(kJournalModbus);
}

Carte::~Carte() {
  vie_.Finit();
  FonctionSuivante_ = nullptr;
  Fonctions_ = nullptr;  // the blocks close their links before the board closes its own
}

void Carte::Lien(ParamètresRef MesParametres_obj) {
  Garde(*this, Forme::Méthode, "Lien", [&] {
    if (MesParametres_obj) MesParametres_ = std::move(MesParametres_obj);
    const bool lié = ligne_->carte != nullptr && ligne_->carte->lieUnParamètre;
    if (!lié || mstrConfigEIR.empty() || !MesParametres_) return;
    bool trouvé = false;
    for (const Ref<ZED_Parametre>& paramètre : *MesParametres_) {
      if (!paramètre || paramètre->NomParamètre() != mstrConfigEIR) continue;
      mobjParamEIR_ = paramètre;
      trouvé = true;
    }
    if (!trouvé) Montre("Parameter not found. Please check card '" + NomDeLaCarte_ + "'.");
  });
}

void Carte::ChargeLesFonctions(const Ref<BaseDeDonnées>& dtbMaBase,
                               std::int32_t lngIndexDeLaCarte) {
  Garde(*this, Forme::Méthode, "ChargeLesFonctions", [&] {
    const auto liste = dtbMaBase->OpenRecordset(requêtes::FonctionsDe(lngIndexDeLaCarte));
    const auto charge = [&](std::int32_t index) {
      const FonctionRef fonction = Fonctions()->Add(std::to_string(index));
      fonction->TimerExact(Timer());
      fonction->ChargeErreur(Erreur());
      fonction->ChargeLesCanaux(dtbMaBase, index);
      fonction->ParamètresDepuisBD(dtbMaBase->OpenRecordset(requêtes::LigneDeLaFonction(index)));
      fonction->Parent(this);
    };
    lignes::PourChacune(*this, Forme::Méthode, "ChargeLesFonctions", "Fonction", *liste, charge);
  });
}

void Carte::Adresse(std::int32_t adresse) {
  Garde(*this, Forme::Ecriture, "Adresse", [&] {
    Adresse_ = adresse;
    for (const FonctionRef& fonction : LesFonctions()) fonction->Adresse(adresse);
  });
}

FonctionsRef Carte::Fonctions() {
  if (!Fonctions_) Fonctions_ = Crée<zuma::Fonctions>(LaPlateforme());
  return Fonctions_;
}

const zuma::Fonctions& Carte::LesFonctions() {
  if (!Fonctions_) Fonctions_ = Crée<zuma::Fonctions>(LaPlateforme());
  return *Fonctions_;
}

void Carte::DéclencheAU() {
  for (const PiloteOuvert& ouvert : pilotes_) ouvert.pilote->OublieSesEcritures();
}

LiaisonSérieRef Carte::RS() {
  if (!RS_) RS_ = LaPlateforme().liaisons->CréeLiaison();
  return RS_;
}

Ref<PortInstrument> Carte::LiaisonSerie2() {
  if (!LiaisonSerie2_) LiaisonSerie2_ = LaPlateforme().liaisons->CréePort();
  return LiaisonSerie2_;
}

// Kept before the row is written: what the operator picked serves the board's next start even when
// the row cannot be.
void Carte::EnregistreConfiguration(const std::string& réglages) {
  Configuration_ = réglages;
  LeRecordset_->Edit();
  LeRecordset_->Ecrit("Configuration ModBus", Valeur(réglages));
  LeRecordset_->Update();
}

void Carte::OuvreLigneSérie() {
  OuvreLigne(*RS(), réglages_);
}

void Carte::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    if (ligne_->carte != nullptr && ligne_->carte->démarre != nullptr) {
      ligne_->carte->démarre(*this);
    }
    for (const FonctionRef& fonction : LesFonctions()) fonction->Initialise();
  });
}

void Carte::MetàJour() {
  Garde(*this, Forme::Méthode, "MetàJour", [&] {
    if (ligne_->service == ServiceCarte::BusSimple ||
        ligne_->service == ServiceCarte::BusAvecSuivante) {
      std::optional<ENUM_TYPE_FONCTION> enMain;
      SertLeBus(enMain);
      return;
    }
    if (ligne_->carte != nullptr && ligne_->carte->rafraîchit != nullptr) {
      ligne_->carte->rafraîchit(*this);
      return;
    }
    Poursuite chacune;
    for (const FonctionRef& fonction : LesFonctions()) chacune([&] { fonction->MetàJour(); });
    chacune.Termine();
  });
}

}  // namespace zuma
