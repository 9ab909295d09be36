#include "sim/variateur_simule.h"

#include <algorithm>
#include <cmath>

namespace zuma::sim {
namespace {

constexpr std::uint16_t kArrêtDuProgramme = 1032;
constexpr std::uint16_t kModeDuProgramme = 1146;
constexpr std::uint16_t kModeSuivi = 2;
constexpr std::uint16_t kConsigneTrouvée = 50;  // of a drive that runs already
constexpr double kRouesLibres = 10;             // units of speed lost each second without a ramp
constexpr unsigned kPrêt = 1;                   // bits of the state word
constexpr unsigned kEnMarche = 2;
constexpr unsigned kEnVitesse = 4;

double Approche(double valeur, double cible, double pas) {
  return valeur < cible ? std::min(valeur + pas, cible) : std::max(valeur - pas, cible);
}

}  // namespace

VariateurSimulé::VariateurSimulé(HorlogeVirtuelle& horloge, std::uint8_t adresse,
                                 RegistresDeVariateur registresDuVariateur)
    : EsclaveModbus(horloge, adresse), places_(registresDuVariateur) {
  PublieLEtat();
}

std::uint16_t VariateurSimulé::Registre(std::uint16_t adresse) const {
  const auto registre = registres.find(adresse);
  return registre == registres.end() ? std::uint16_t{0} : registre->second;
}

bool VariateurSimulé::Prêt() const {
  return arrêté_ && Registre(kArrêtDuProgramme) == 0 && Registre(kModeDuProgramme) == kModeSuivi;
}

double VariateurSimulé::Consigne() const {
  const auto signe = static_cast<std::int16_t>(Registre(places_.consigne));
  const double entier = Registre(static_cast<std::uint16_t>(places_.consigne + 1));
  const double centièmes = Registre(static_cast<std::uint16_t>(places_.consigne + 2));
  return Prêt() ? signe * (entier + centièmes / 100) : 0;
}

void VariateurSimulé::Tourne() {
  const double secondes = (horloge_.Maintenant() - heure_) / 1e6;
  heure_ = horloge_.Maintenant();
  const double rampe = Registre(static_cast<std::uint16_t>(places_.consigne + 3)) / 10.0;
  vitesse_ = Approche(vitesse_, Consigne(), (rampe > 0 ? rampe : kRouesLibres) * secondes);
  PublieLEtat();
}

void VariateurSimulé::PublieLEtat() {
  const double consigne = Consigne();
  unsigned état = Prêt() ? kPrêt : 0;
  if (vitesse_ != 0) état |= kEnMarche;
  if (consigne != 0 && vitesse_ == consigne) état |= kEnVitesse;
  registres[places_.état] = static_cast<std::uint16_t>(état);
  registres[static_cast<std::uint16_t>(places_.état + 1)] =
      static_cast<std::uint16_t>(std::lround(std::fabs(vitesse_) * 100));
  registres[static_cast<std::uint16_t>(places_.état + 2)] = 0;
}

Octets VariateurSimulé::Traite(std::string_view question) {
  Tourne();
  Octets réponse = EsclaveModbus::Traite(question);
  if (Registre(kArrêtDuProgramme) != 0) arrêté_ = true;
  return réponse;
}

void VariateurSimulé::MetEnMarche() {
  arrêté_ = true;
  registres[kArrêtDuProgramme] = 0;
  registres[kModeDuProgramme] = kModeSuivi;
  registres[places_.consigne] = 1;
  registres[static_cast<std::uint16_t>(places_.consigne + 1)] = kConsigneTrouvée;
  vitesse_ = kConsigneTrouvée;
  heure_ = horloge_.Maintenant();
  PublieLEtat();
}

double VariateurSimulé::Vitesse() {
  Tourne();
  return vitesse_;
}

}  // namespace zuma::sim
