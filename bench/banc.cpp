#include "bench/banc.h"

#include <algorithm>
#include <array>

#include "platform/linux/base_sqlite.h"

namespace zuma::banc {
namespace {

constexpr std::size_t kEntréesMues = 16;

// In the order of `Param`.
constexpr std::array kValeurs{"Compression", "Cylindre", "160", "mm",     "1",
                              "150",         "2",        "0,5", "ouvert", "fermé"};

}  // namespace

Banc::Banc(const std::vector<linux_::LigneDeBase>& lignes, std::int32_t chassis) : index_(chassis) {
  for (std::int32_t n = kType; n <= kDernier; ++n) {
    paramètres_.Ajoute(n, n < kEtats ? kValeurs[static_cast<std::size_t>(n - kType)] : "");
  }
  linux_::CréeBase(Fichier(), lignes);
  sécurité_->Branche(chassis_);
  sécurité_->Bornes(*traducteur_);
  Charge(chassis_);
  machine_.Branche(chassis_);
  chassis_.Initialise();
  for (const CarteRef& carte : *chassis_.Cartes()) {
    for (const FonctionRef& bloc : carte->LesFonctions()) {
      auto borne = machine_.BorneDe(**bloc->LesCanaux().begin());
      if (!borne) continue;
      sim::Bornes* bornes = &borne->DeLaCarte();
      if (!std::ranges::count(bornes_, bornes)) bornes_.push_back(bornes);
    }
  }
}

Banc::~Banc() {
  chassis_.DéclencheAU();
  chassis_.Décharge();
}

void Banc::Charge(Chassis& chassis) const {
  const Ref<BaseDeDonnées> base = Crée<linux_::BaseSqlite>(Fichier());
  const LecturesCohérentes lectures(base);
  chassis.TimerExact(machine_.horloge);
  chassis.ChargeErreur(recueil_);
  chassis.ChargeLeChassis(base, index_);
  chassis.Lien(base, std::to_string(index_), sécurité_, paramètres_.Collection(), traducteur_);
  chassis.MiseàJourDesLiens();
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
