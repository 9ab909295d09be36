#include "platform/linux/parametres.h"

#include <algorithm>
#include <exception>

namespace zuma::linux_ {

void Parametre::ValeurParamètre(std::string valeur) {
  if (valeur == valeur_) return;
  valeur_ = std::move(valeur);
  changéeDepuis_ = true;
  if (!enDiffusion_) Diffuse();
}

void Parametre::Diffuse() {
  // A handler may release the last reference to this parameter.
  const auto vivant = weak_from_this().lock();
  enDiffusion_ = true;
  std::exception_ptr échec;
  for (int tour = 0; tour < kTours && changéeDepuis_; ++tour) {
    changéeDepuis_ = false;
    FaitUnTour(échec);
  }
  enDiffusion_ = false;
  abonnements_.remove_if([](const Abonnement& a) { return !a.vivant; });
  if (échec) std::rethrow_exception(échec);
  if (std::exchange(changéeDepuis_, false)) {
    throw Echec(Numéro::AppelIncorrect,
                "Le paramètre '" + nom_ + "' change sans fin, dernière valeur '" + valeur_ + "'");
  }
}

void Parametre::FaitUnTour(std::exception_ptr& échec) {
  const int dernier = dernierNuméro_;  // numbers grow: later ones subscribed during the round
  for (Abonnement& a : abonnements_) {
    if (!a.vivant || a.numéro > dernier) continue;
    try {
      a.abonné();
    } catch (...) {
      if (!échec) échec = std::current_exception();
    }
  }
}

int Parametre::Abonne(Abonné abonné) {
  abonnements_.push_back({dernierNuméro_ + 1, std::move(abonné)});
  return ++dernierNuméro_;
}

void Parametre::Désabonne(int numéro) noexcept {
  const auto trouvé = std::ranges::find(abonnements_, numéro, &Abonnement::numéro);
  if (trouvé == abonnements_.end()) return;
  if (enDiffusion_) {
    trouvé->vivant = false;
  } else {
    abonnements_.erase(trouvé);
  }
}

Ref<Parametre> Parametres::Ajoute(std::int32_t index, std::string valeur, std::string nom) {
  if (const Ref<Parametre> connu = Cherche(index)) {
    connu->ValeurParamètre(std::move(valeur));
    return connu;
  }
  std::string clé = std::to_string(index);
  if (nom.empty()) nom = clé;
  const auto nouveau = Crée<Parametre>(std::move(clé), std::move(nom), std::move(valeur));
  parametres_.emplace(index, nouveau);
  collection_->push_back(nouveau);
  return nouveau;
}

Ref<Parametre> Parametres::Cherche(std::int32_t index) const {
  const auto trouvé = parametres_.find(index);
  return trouvé == parametres_.end() ? Ref<Parametre>() : trouvé->second;
}

}  // namespace zuma::linux_
