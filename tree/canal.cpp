#include "tree/canal.h"

#include <algorithm>
#include <array>

#include "base/colonnes.h"
#include "base/garde.h"
#include "tree/carte.h"
#include "tree/fonction.h"
#include "tree/registre_des_drivers.h"

namespace zuma {

using colonnes::LitBooléen;
using colonnes::LitEntier16;
using colonnes::LitTexte;

void Canal::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Valeur vData;
  Garde(
      *this, Forme::Procédure, "ParamètresDepuisBD", [&] { LitLigne(*rstMonRecordSet, vData); },
      [&](Variables& v) { v.Ajoute("vData", vData); });
}

void Canal::LitLigne(const Recordset& ligne, Valeur& vData) {
  using Colonne = colonnes::Colonne<Canal>;
  using C = Canal;
  static constexpr std::array<Colonne, 2> kRequises{{
      {"Numéro du Canal", &LitEntier16<&C::NuméroCanal_>},
      {"Nom du Canal", &LitTexte<&C::Nom_>},
  }};
  static constexpr Colonne kStatusID{"Status ID", &LitEntier16<&C::StatusID_>};
  static constexpr std::array<Colonne, 7> kFacultatives{{
      {"N° de série", &LitTexte<&C::mstrNuméroDeSérie>},
      {"N° de Node", &LitEntier16<&C::mintNode>},
      {"Mode opératoire", &LitEntier16<&C::mintMode>},
      {"Nombre d'aimants", &LitEntier16<&C::mintNombreAimants>},
      {"Position de l'aimant", &LitEntier16<&C::mintPositionAimant>},
      {"Position ID", &LitEntier16<&C::PositionID_>},
      kStatusID,
  }};
  static constexpr Colonne kFréquence{"Canal en fréquence", &LitBooléen<&C::mblnCanalEnFréquence>};
  static constexpr Colonne kSigné{"ModBus - Registre signé", &LitBooléen<&C::registreSigné_>};
  // A field found by walking, skipped when missing, Null or empty.
  const auto cherche = [&](const Colonne& colonne) {
    const Valeur* champ = ChercheChamp(ligne, colonne.nom);
    if (champ == nullptr || EstNulOuVide(*champ)) return;
    vData = *champ;
    colonne.Lit(*this, vData);
  };

  for (const Colonne& colonne : kRequises) {
    vData = LitChamp(ligne, colonne.nom);
    colonne.Lit(*this, vData);
  }
  const Valeur* aimant = ChercheChamp(ligne, "Position de l'aimant");
  if (aimant != nullptr && EstNul(*aimant)) mintPositionAimant = 0;
  for (const Colonne& colonne : kFacultatives) cherche(colonne);
  LitDriver(ligne, vData);
  // Read twice, as tables without "Status ID" rely on the first walk alone.
  cherche(kStatusID);
  mblnCanalEnFréquence = false;
  cherche(kFréquence);
  cherche(kSigné);
}

// The driver is looked for behind "Status ID": a table without that column keeps the block's
// driver, and one with it must have "Driver canal" too.
void Canal::LitDriver(const Recordset& ligne, Valeur& vData) {
  if (ChercheChamp(ligne, "Status ID") == nullptr) return;
  Driver(ENUM_DRIVER::DrvAucun);
  vData = LitChamp(ligne, "Driver canal");
  Driver(LaPlateforme().drivers->DeCanal(vData).valeur);
}

void Canal::Gain(const Valeur& gain) {
  Garde(
      *this, Forme::Ecriture, "Gain", [&] { mintGain = VersEntier16(gain); },
      [&](Variables& v) { v.Ajoute("mintGain", mintGain); });
}

// Not held, as a block does not hold its board: who keeps a channel when that ends finds no parent,
// whatever collection it was taken out of, and fails where its driver was.
void Canal::Parent(Fonction* parent) {
  Parent_ = PointeurSuivi<Fonction>(parent);
}

void Canal::Driver(ENUM_DRIVER driver) {
  musrDriver = driver;
  Résout();
}

void Canal::TypeCanal(ENUM_TYPE_FONCTION type) {
  musrTypeCanal = type;
  Résout();
}

void Canal::Résout() {
  ligne_ = &LigneDuDriver(LaPlateforme(), musrDriver);
  opérations_ = ligne_->Sert(musrTypeCanal) ? ligne_->pilote : nullptr;
  pilote_ = {};
  RetientLAgeLimite();
}

// A channel without a driver of its own is read by that of its board. Slow slaves, whose board
// gives them more time, make the walk over a bus longer.
void Canal::RetientLAgeLimite(double périodeDuChassis) {
  constexpr double kFacteur = 5;
  constexpr double kMillisecondes = 1000;
  constexpr double kMinimum = 1;  // seconds
  Carte* const carte = Parent() == nullptr ? nullptr : Parent()->Parent();
  const bool deLaCarte = musrDriver == ENUM_DRIVER::DrvAucun && carte != nullptr;
  const LigneDriver& ligne = deLaCarte ? carte->LeDriver() : *ligne_;
  double période = std::max(ligne.période, périodeDuChassis);
  if (ligne.service == ServiceCarte::BusAvecSuivante && carte != nullptr && carte->Fonctions()) {
    const double tour = carte->Fonctions()->Count() * carte->TimeOutModbus() / kMillisecondes;
    période = std::max(période, tour);
  }
  âgeLimite_ = std::max(kMinimum, kFacteur * période);
}

Canal::Suite Canal::Regarde(double& durée) {
  constexpr std::uint8_t kDite = 2;
  if (!EstVieux()) {
    durée = LaPlateforme().heureDePasse - heureAvantLaPerte_;
    return std::exchange(regards_, std::uint8_t{0}) == kDite ? Suite::Retrouvée : Suite::Rien;
  }
  if (regards_ == kDite) return Suite::Rien;
  heureAvantLaPerte_ = heureDeLecture_;
  durée = Age();
  return ++regards_ == kDite ? Suite::Perdue : Suite::Rien;
}

void Canal::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    RetientLAgeLimite();
    if (opérations_ == nullptr) return;
    if (opérations_->ouvre != nullptr) {
      Carte& carte = *Parent_->LaCarte();
      // Of the board, and not of the block: it goes on serving when the block has gone.
      pilote_ = {&opérations_->ouvre(carte, Base()), carte.LaVie()};
    }
    if (opérations_->démarreCanal != nullptr) opérations_->démarreCanal(*this);
  });
}

void Canal::MetàJour() {
  Garde(
      *this, Forme::Méthode, "MetàJour",
      [&] {
        if (!mblnEnService) return;
        CanalRafraichit_ = true;
        if (opérations_ != nullptr && opérations_->rafraîchitCanal != nullptr) {
          opérations_->rafraîchitCanal(*this);
        }
      },
      [&](Variables& v) {
        v.Ajoute("musrTypeCanal", static_cast<std::int32_t>(musrTypeCanal));
        v.Ajoute("musrDriver", static_cast<std::int32_t>(musrDriver));
        v.Ajoute("mdblValeurCanal", mdblValeurCanal);
        v.Ajoute("IndexLecture", IndexLecture);
        v.Ajoute("SommeTemp", SommeTemp);
      });
}

}  // namespace zuma
