#include "host/desktop/enregistrement_du_bureau.h"

#include "host/desktop/textes.h"

namespace zuma::host {

EnregistrementDuBureau::~EnregistrementDuBureau() {
  Finit();
  for (const auto& enregistreur : enregistreurs_) (void)FermeEtDit(*enregistreur);
}

void EnregistrementDuBureau::Commence(const std::string& fichier) {
  Finit();
  auto enregistreur = std::make_unique<Enregistreur>(fichier, Enregistreur::Retard::Perd);
  Enregistreur::Textes spécimen;
  for (const auto& paramètre : *marche_.LesParamètres().Collection()) {
    spécimen.emplace_back(paramètre->NomParamètre(), paramètre->ValeurParamètre());
  }
  Enregistre(marche_, *enregistreur, spécimen);
  enregistreurs_.push_back(std::move(enregistreur));
  enCours_ = true;
}

void EnregistrementDuBureau::Finit() {
  if (enCours_) enregistreurs_.back()->Termine();
  enCours_ = false;
}

QString EnregistrementDuBureau::Phrase() const {
  return enregistreurs_.empty() ? QString() : EnQt(host::Phrase(enregistreurs_.back()->Etat()));
}

bool EnregistrementDuBureau::EnPanne() const {
  return !enregistreurs_.empty() && !enregistreurs_.back()->Etat().Complet() &&
         enregistreurs_.back()->Etat().erreur != 0;
}

}  // namespace zuma::host
