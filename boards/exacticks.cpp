#include "boards/exacticks.h"

#include <utility>

namespace zuma {

void Exacticks::Ouvre(Pointeur<CompteursFins> compteurs, std::string nom) {
  Ferme();
  nom_ = std::move(nom);
  poignée_ = compteurs->Ouvre(nom_);
  compteurs_ = compteurs;
  acquis_ = 0;
}

std::int64_t Exacticks::Lit() {
  const std::int32_t compte = compteurs_->Lit(poignée_);
  if (compte <= kLimite) return acquis_ + compte;
  acquis_ += compte;
  compteurs_->Ferme(poignée_);
  poignée_ = compteurs_->Ouvre(nom_);
  return acquis_;
}

void Exacticks::Ferme() noexcept {
  if (compteurs_) compteurs_->Ferme(poignée_);
  compteurs_ = nullptr;
}

void Exacticks::Attend(std::int64_t microsecondes) {
  const std::int64_t fin = Lit() + microsecondes;
  while (Lit() < fin) {
  }
}

}  // namespace zuma
