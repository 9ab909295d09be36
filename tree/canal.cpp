#include "tree/canal.h"

#include "core/garde.h"
#include "core/outils_communs.h"
#include "tree/carte.h"
#include "tree/fonction.h"

namespace zuma {

using OutilsCommuns::LitChampSûr;

void Canal::ParamètresDepuisBD(const Ref<Recordset>& rstMonRecordSet) {
  Valeur vData;
  Garde(
      *this, Forme::Procédure, "ParamètresDepuisBD", [&] { LitLigne(*rstMonRecordSet, vData); },
      [&](Variables& v) { v.Ajoute("vData", vData); });
}

void Canal::LitLigne(const Recordset& ligne, Valeur& vData) {
  // A field found by walking, skipped when missing, Null or empty.
  const auto cherche = [&](std::string_view colonne) {
    const Valeur* champ = ChercheChamp(ligne, colonne);
    if (champ == nullptr || EstNulOuVide(*champ)) return false;
    vData = *champ;
    return true;
  };
  const auto litEntier16 = [&](std::string_view colonne, std::int16_t& destination) {
    if (cherche(colonne)) destination = VersEntier16(LitChampSûr(vData));
  };

  vData = LitChamp(ligne, "Numéro du Canal");
  NuméroCanal_ = VersEntier16(LitChampSûr(vData));
  vData = LitChamp(ligne, "Nom du Canal");
  Nom_ = VersTexte(vData);
  if (cherche("N° de série")) mstrNuméroDeSérie = VersTexte(vData);
  litEntier16("N° de Node", mintNode);
  litEntier16("Mode opératoire", mintMode);
  litEntier16("Nombre d'aimants", mintNombreAimants);
  const Valeur* aimant = ChercheChamp(ligne, "Position de l'aimant");
  if (aimant != nullptr && EstNul(*aimant)) mintPositionAimant = 0;
  litEntier16("Position de l'aimant", mintPositionAimant);
  litEntier16("Position ID", PositionID_);
  litEntier16("Status ID", StatusID_);
  LitDriver(ligne, vData);
  // Read twice, as tables without "Status ID" rely on the first walk alone.
  litEntier16("Status ID", StatusID_);
  mblnCanalEnFréquence = cherche("Canal en fréquence") && VersBooléen(vData);
}

// The driver is looked for behind "Status ID": a table without that column keeps the block's
// driver, and one with it must have "Driver canal" too.
void Canal::LitDriver(const Recordset& ligne, Valeur& vData) {
  if (ChercheChamp(ligne, "Status ID") == nullptr) return;
  Driver(ENUM_DRIVER::DrvAucun);
  vData = LitChamp(ligne, "Driver canal");
  Driver(DriverDeCanal(vData));
}

void Canal::Gain(const Valeur& gain) {
  Garde(
      *this, Forme::Ecriture, "Gain", [&] { mintGain = VersEntier16(gain); },
      [&](Variables& v) { v.Ajoute("mintGain", mintGain); });
}

void Canal::Parent(Fonction* parent) {
  Parent_ = parent;
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
  const LigneDriver& ligne = LigneDuDriver(musrDriver);
  opérations_ = ligne.Sert(musrTypeCanal) ? ligne.pilote : nullptr;
  pilote_ = nullptr;
}

void Canal::Initialise() {
  Garde(*this, Forme::Méthode, "Initialise", [&] {
    LigneDuDriver(musrDriver).ExigeConstruit();
    if (opérations_ == nullptr) return;
    if (opérations_->ouvre != nullptr) pilote_ = &opérations_->ouvre(*Parent_->LaCarte(), Base());
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

void Canal::Détache() noexcept {
  Parent_ = nullptr;
  pilote_ = nullptr;
}

}  // namespace zuma
