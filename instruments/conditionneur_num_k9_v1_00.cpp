#include "instruments/conditionneur_num_k9_v1_00.h"

#include <utility>

#include "instruments/trames_conditionneur.h"

namespace zuma {

using Envoi = EchangeConditionneur::Envoi;

namespace {

// One register tells the firmwares apart; three bring the values from both.
constexpr std::int32_t kRegistresDeDétection = 1;
constexpr std::int32_t kRegistresDeLecture = 3;

double VersionDe(std::int32_t octets) {
  if (octets == trames_conditionneur::kOctetsVersion1) return 1;
  if (octets == trames_conditionneur::kOctetsVersion2) return 2;
  return trames_conditionneur::kVersionInconnue;
}

}  // namespace

double ClassConditionneurNum_K9_V1_00::ValeurCanal(std::int32_t IndexCanal) const {
  double valeur = 0;
  for (const ClassCanalElementK9& canal : canaux_) {
    if (canal.IndexCanal == IndexCanal) valeur = canal.Valeur;
  }
  return valeur;
}

bool ClassConditionneurNum_K9_V1_00::PortExistant() const {
  return LiaisonSerie_ && LiaisonSerie_->PortExiste();
}

// The mark of the time-out is a boolean, -1 or 0, where a time was meant. It must stay: hosts take
// the property as it is.
bool ClassConditionneurNum_K9_V1_00::TimeoutAffichable() const {
  return Maintenant() < (Timeout() ? kVrai : 0) + kAffichage;
}

bool ClassConditionneurNum_K9_V1_00::Initialise(Ref<PortInstrument> MaLiaisonSerie,
                                                std::int32_t adresse) {
  Adresse_ = adresse;
  LiaisonSerie_ = std::move(MaLiaisonSerie);
  canaux_.clear();
  détectionEnCours_ = false;
  if (DemandeQuiEstLà() && échange_.AttendRéponse(Ligne())) Reconnaît();
  return false;
}

bool ClassConditionneurNum_K9_V1_00::DemandeQuiEstLà() {
  if (!PeutInterroger(LiaisonSerie_, Adresse_)) return false;
  Initialised_ = false;
  dernierEssai_ = Maintenant();
  return EnvoieRequête(kRegistresDeDétection, Envoi::Forcé);
}

void ClassConditionneurNum_K9_V1_00::Reconnaît() {
  version_ = VersionDe(échange_.Données().Nombre());
  Initialised_ = version_ != trames_conditionneur::kVersionInconnue;
  if (!Initialised_) return;
  CréeLesCanaux();
  EstEntendu();
}

// A module that is silent for a second keeps its values until there are others.
void ClassConditionneurNum_K9_V1_00::Refresh() {
  if (Initialised_) {
    Lit();
    SurveilleLePort();
  }
  Surveille();
  if (!Initialised()) Initialised_ = false;  // silent: looked for, as one that was unplugged
  if (!Initialised_) Cherche();
}

void ClassConditionneurNum_K9_V1_00::Lit() {
  if (!LiaisonSerie_) return;
  if (échange_.EnAttente() && échange_.LitRéponse(Ligne())) (void)MetLesValeurs();
  if (!échange_.EnAttente()) (void)EnvoieRequête(kRegistresDeLecture, Envoi::SiLibre);
}

void ClassConditionneurNum_K9_V1_00::SurveilleLePort() {
  if (!PortExistant() || !LiaisonSerie_->PortConfiguré()) Initialised_ = false;
}

// A try lasts over several refreshes: sensors, limits and stops must not wait for a module that is
// not there. The next try comes a second after its end.
void ClassConditionneurNum_K9_V1_00::Cherche() {
  if (!LiaisonSerie_) return;
  if (détectionEnCours_) {
    if (échange_.LitRéponse(Ligne())) Reconnaît();
    détectionEnCours_ = échange_.EnAttente();
  } else {
    if (Maintenant() - dernierEssai_ < kEntreDeuxEssais) return;
    LiaisonSerie_->RéinitialisePort();
    détectionEnCours_ = DemandeQuiEstLà();
  }
  dernierEssai_ = Maintenant();
}

}  // namespace zuma
