#include "instruments/conditionneur_commun.h"

#include "instruments/trames_conditionneur.h"

namespace zuma {

namespace trames = trames_conditionneur;

namespace {

constexpr double kPéremption = 300'000;  // microseconds
constexpr double kSilence = 1'000'000;

}  // namespace

bool ConditionneurCommun::PeutInterroger(const Ref<PortInstrument>& liaison, std::int32_t adresse) {
  return liaison && liaison->PortOuvert() && adresse >= 0 && adresse < 128;
}

bool ConditionneurCommun::EnvoieRequête(std::int32_t nbRegistres,
                                        EchangeConditionneur::Envoi envoi) {
  return échange_.EnvoieRequête(
      Ligne(), Adresse_, plateforme_.réglages.premierRegistreConditionneur, nbRegistres, envoi);
}

void ConditionneurCommun::CréeLesCanaux() {
  if (!canaux_.empty()) return;
  for (std::int32_t i = 0; i < trames::kNombreDeCanaux; ++i) {
    canaux_.push_back({i, ENUM_TYPE_FONCTION::FctEntréesAnalogiques, 0});
  }
}

bool ConditionneurCommun::MetLesValeurs() {
  if (échange_.Données().Nombre() < trames::kOctetsDesCanaux) return false;
  for (ClassCanalElementK9& canal : canaux_) {
    canal.Valeur = trames::ValeurDuCanal(échange_.Données(), canal.IndexCanal);
  }
  ++mesures_;
  EstEntendu();
  heureDesValeurs_ = heureEntendue_;
  return true;
}

void ConditionneurCommun::Surveille() {
  const double maintenant = Maintenant();
  périmé_ = !heureDesValeurs_ || maintenant - *heureDesValeurs_ > kPéremption;
  muet_ = maintenant - heureEntendue_ > kSilence;
}

ConditionneurAffiché::Drapeaux ConditionneurCommun::DrapeauxAffichés() const {
  Drapeaux drapeaux;
  static_assert(std::tuple_size_v<Drapeaux> == kNombreDeDrapeaux);
  for (std::size_t i = 0; i < drapeaux.size(); ++i) {
    const auto drapeau = static_cast<DrapeauConditionneur>(i);
    drapeaux[i] = {NomDuDrapeau(drapeau), Levé(drapeau)};
  }
  return drapeaux;
}

void ConditionneurCommun::Reglage(FenêtreHôte* FeuilleMere_obj) {
  if (!plateforme_.fenêtres) return;
  FeuilleConditionneurNumerique* feuille = plateforme_.fenêtres->FeuilleDuConditionneur();
  if (feuille == nullptr) return;
  feuille->Reçoit(*this);
  feuille->Montre(*plateforme_.fenêtres, FeuilleMere_obj);
}

}  // namespace zuma
