#include "instruments/conditionneur_num_k9.h"

#include <algorithm>
#include <string>
#include <utility>

#include "instruments/trames_conditionneur.h"

namespace zuma {

using Envoi = EchangeConditionneur::Envoi;
using enum ENUM_TYPE_FONCTION;

namespace {

// This firmware gives its three channels for the one register asked; the other one does not.
constexpr std::int32_t kRegistresDemandés = 1;

}  // namespace

const ClassCanalElementK9* ClassConditionneurNum_K9::Trouve(ENUM_TYPE_FONCTION type,
                                                            std::int32_t index) const {
  const auto canal = std::ranges::find_if(canaux_, [&](const ClassCanalElementK9& c) {
    return c.LeType == type && c.IndexCanal == index;
  });
  return canal == canaux_.end() ? nullptr : &*canal;
}

void ClassConditionneurNum_K9::Ecrit(ENUM_TYPE_FONCTION type, std::int32_t index, double valeur) {
  for (ClassCanalElementK9& canal : canaux_) {
    if (canal.LeType == type && canal.IndexCanal == index) canal.Valeur = valeur;
  }
}

double ClassConditionneurNum_K9::ParCanalEA(std::int32_t IndexCanal) const {
  const ClassCanalElementK9* canal = Trouve(FctEntréesAnalogiques, IndexCanal);
  return canal == nullptr ? 0 : canal->Valeur;
}

bool ClassConditionneurNum_K9::ParCanalEL(std::int32_t IndexCanal) const {
  const ClassCanalElementK9* canal = Trouve(FctEntréesLogiques, IndexCanal);
  return canal != nullptr && canal->Valeur != 0;
}

void ClassConditionneurNum_K9::ParCanalSA(std::int32_t IndexCanal, double valeur) {
  Ecrit(FctSortiesAnalogiques, IndexCanal, valeur);
}

void ClassConditionneurNum_K9::ParCanalSL(std::int32_t IndexCanal, bool valeur) {
  Ecrit(FctSortiesLogiques, IndexCanal, valeur ? kVrai : 0);
}

bool ClassConditionneurNum_K9::Initialise(Ref<PortInstrument> MaLiaisonSerie,
                                          std::int32_t adresse) {
  if (!PeutInterroger(MaLiaisonSerie, adresse)) return false;
  LiaisonSerie_ = std::move(MaLiaisonSerie);
  Adresse_ = adresse;
  canaux_.clear();
  Initialised_ = false;
  if (!EnvoieRequête(kRegistresDemandés, Envoi::SiLibre)) {
    plateforme_.messages->Montre("Oups! Impossible d'interroger le module d'adresse " +
                                     std::to_string(adresse) + " qui est connecté sur le COM " +
                                     std::to_string(LiaisonSerie_->NuméroPort()),
                                 {"ClassConditionneurNum_K9", {}, {}});
  }
  if (!échange_.AttendRéponse(Ligne())) return false;
  if (échange_.Données().Nombre() != trames_conditionneur::kOctetsVersion1) {
    version_ = trames_conditionneur::kVersionInconnue;
    return false;
  }
  CréeLesCanaux();
  version_ = 1;
  Initialised_ = true;
  EstEntendu();
  prochaineLecture_ = Maintenant() + kPériode;
  return false;
}

void ClassConditionneurNum_K9::Refresh() {
  MAJFaite_ = false;
  if (Initialised_ && Maintenant() > prochaineLecture_) Lit();
  Surveille();
}

// Goes on while the module is silent: nothing else would find it again. An answer too short for
// the three values leaves them, and is asked again at once.
void ClassConditionneurNum_K9::Lit() {
  (void)EnvoieRequête(kRegistresDemandés, Envoi::SiLibre);
  if (!échange_.LitRéponse(Ligne()) || !MetLesValeurs()) return;
  prochaineLecture_ += kPériode;
  MAJFaite_ = true;
}

}  // namespace zuma
