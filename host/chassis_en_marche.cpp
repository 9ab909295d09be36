#include "host/chassis_en_marche.h"

#include "host/configuration.h"

namespace zuma::host {
namespace {

bool EstLaissée(const Carte& carte) {
  const LigneDriver& ligne = LigneDuDriver(carte.Driver_enm());
  return ligne.service == ServiceCarte::ParFonction && ligne.carte != nullptr &&
         ligne.carte->rafraîchit != nullptr;
}

}  // namespace

ChassisEnMarche::ChassisEnMarche(const std::string& fichier, std::int32_t index, Machine& machine,
                                 const Ref<Recueil>& recueil, linux_::Parametres paramètres)
    : recueil_(recueil),
      paramètres_(std::move(paramètres)),
      sécurité_(Crée<linux_::Securite>(machine.Timer())),
      chassis_(machine.Services()) {
  const Ref<BaseDeDonnées> base = OuvreLaBase(fichier, false);
  ExigeChassis(*base, fichier, index);
  sécurité_->Branche(chassis_);
  sécurité_->Bornes(*traducteur_);
  chassis_.TimerExact(machine.Timer());
  chassis_.ChargeErreur(recueil);
  chassis_.ChargeLeChassis(base, index);
  chassis_.Lien(base, std::to_string(index), sécurité_, paramètres_.Collection(), traducteur_);
  chassis_.MiseàJourDesLiens();
  for (const CarteRef& carte : *chassis_.Cartes()) {
    carte->Lien(paramètres_.Collection());
    if (EstLaissée(*carte)) laissées_.push_back(carte);
  }
  machine.Branche(chassis_);
  chassis_.Initialise();
}

void ChassisEnMarche::Passe() {
  const std::uint64_t avant = chassis_.RafraichissementsEA();
  chassis_.MetàJour();
  if (chassis_.RafraichissementsEA() == avant) return;
  for (const CarteRef& carte : laissées_) carte->MetàJour();
}

ChassisEnMarche::~ChassisEnMarche() {
  try {
    chassis_.DéclencheAU();
    chassis_.Décharge();
  } catch (...) {
    recueil_->AjouteErreur(EchecCourant(__LINE__).what(), {});
  }
  sécurité_->Débranche();
}

void ChassisEnMarche::Arrête() {
  sécurité_->PositionneCauseAU("stop asked at the keyboard");
  (void)sécurité_->DéclencheSécurité();
}

bool ChassisEnMarche::Acquitte() {
  if (!sécurité_->Acquitte()) return false;
  chassis_.Watchdog()->Réarme();
  return true;
}

}  // namespace zuma::host
