#include "bench/banc.h"

#include <algorithm>

namespace zuma::banc {
namespace {

constexpr std::size_t kEntréesMues = 16;

}  // namespace

linux_::Parametres ParamètresDeBanc() {
  linux_::Parametres p;
  p.Ajoute(paramètre::kType, "Compression");
  p.Ajoute(paramètre::kForme, "Cylindre");
  p.Ajoute(paramètre::kDiamètre, "160");
  p.Ajoute(paramètre::kUnité, "mm");
  p.Ajoute(paramètre::kSection, "1");
  p.Ajoute(paramètre::kLongueur, "150");
  p.Ajoute(paramètre::kChoix, "2");
  p.Ajoute(paramètre::kDécalage, "0,5");
  p.Ajoute(paramètre::kActif, "ouvert");
  p.Ajoute(paramètre::kInactif, "fermé");
  for (std::int32_t n = 0; n < paramètre::kNombreEcrits; ++n) {
    p.Ajoute(paramètre::kEtat + n);
    p.Ajoute(paramètre::kVoulue + n);
  }
  return p;
}

void Charge(Chassis& chassis, const Base& base, const Ref<host::Recueil>& recueil,
            const Ref<ZED_Timer>& timer, const Ref<ZED_Securite>& sécurité,
            const ParamètresRef& paramètres, const Ref<ZED_Traduction>& traducteur) {
  const Ref<BaseDeDonnées> ouverte = Crée<linux_::BaseSqlite>(base.Chemin());
  chassis.TimerExact(timer);
  chassis.ChargeErreur(recueil);
  chassis.ChargeLeChassis(ouverte, kChassis);
  chassis.Lien(ouverte, std::to_string(kChassis), sécurité, paramètres, traducteur);
  chassis.MiseàJourDesLiens();
}

Banc::Banc(const Base& base) : chassis_(machine_.services) {
  sécurité_->Branche(chassis_);
  sécurité_->Bornes(*traducteur_);
  Charge(chassis_, base, recueil_, machine_.horloge, sécurité_, paramètres_.Collection(),
         traducteur_);
  machine_.Branche(chassis_);
  chassis_.Initialise();
  for (const CarteRef& carte : *chassis_.Cartes()) {
    for (const FonctionRef& bloc : carte->LesFonctions()) {
      sim::Bornes* bornes = machine_.ports.BornesDe(**bloc->LesCanaux().begin());
      if (bornes != nullptr && !std::ranges::count(bornes_, bornes)) bornes_.push_back(bornes);
    }
  }
}

Banc::~Banc() {
  chassis_.DéclencheAU();
  chassis_.Décharge();
}

std::string Banc::Plaintes() const {
  std::string texte;
  for (const host::Problème& problème : recueil_->Problèmes()) {
    texte += host::Ligne(problème) + '\n';
  }
  return texte;
}

// A range that every converter reads at one gain, so that each pass does the same work.
void Banc::Bouge() {
  const double volts = 2 + 0.01 * (tour_ % 7);
  const std::uint32_t lignes = 0x11111111U << tour_ % 4;
  for (sim::Bornes* bornes : bornes_) {
    std::fill_n(bornes->entréesAnalogiques.begin(), kEntréesMues, volts);
    bornes->entréesLogiques ^= lignes;
  }
  ++tour_;
}

}  // namespace zuma::banc
