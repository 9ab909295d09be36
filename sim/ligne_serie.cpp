#include "sim/ligne_serie.h"

#include <algorithm>
#include <utility>

namespace zuma::sim {
namespace {

// What a port keeps for a program that does not read, and to send; more is lost.
constexpr std::size_t kTampon = 4096;
constexpr std::size_t kEnRouteAuPlus = 512;  // reserved, not a limit

}  // namespace

LigneSérie::~LigneSérie() {
  if (horloge_ != nullptr) horloge_->Quitte(*this);
}

// Room is made once: a pass must not be charged for it.
void LigneSérie::Attache(Ref<AppareilSérie> nouveau) {
  if (horloge_ != nullptr) horloge_->Quitte(*this);
  appareil = std::move(nouveau);
  horloge_ = &appareil->LHorloge();
  horloge_->Suit(*this);
  Perd();
  réveil_ = kJamais;
  figés_.clear();
  aller_.octets.reserve(kEnRouteAuPlus);
  retour_.octets.reserve(kEnRouteAuPlus);
  reçus_.reserve(kTampon);
  envoi_.reserve(kEnRouteAuPlus);
  appareil->Branche(*this);
}

void LigneSérie::Ouvre(std::int32_t vitesse) {
  ++ouvertures;
  vitesse_ = vitesse;
  reçus_.clear();
  babil_ = horloge_->Maintenant();
}

bool LigneSérie::Ecrit(std::string_view octets, std::int32_t vitesse) {
  if (aller_.octets.size() + octets.size() > kTampon) return false;
  vitesse_ = vitesse;
  envoi_.assign(octets);
  AbîmeUnOctet(pannes, hasard, envoi_);
  Pose(aller_, envoi_, horloge_->Maintenant());
  return true;
}

Octets& LigneSérie::Reçus() {
  if (pannes.babillarde) Babille();
  if (!pannes.babillarde) babil_ = horloge_->Maintenant();
  return reçus_;
}

void LigneSérie::Perd() noexcept {
  for (Voie* voie : {&aller_, &retour_}) {
    voie->octets.clear();
    voie->libre = 0;
  }
  reçus_.clear();
}

void LigneSérie::Emet(std::string_view octets, double retard) {
  if (octets.empty()) return;
  envoi_.assign(octets);
  if (!pannes.figée) figés_.clear();
  if (pannes.figée && figés_.empty()) figés_ = envoi_;
  if (pannes.figée) envoi_ = figés_;
  Abîme(pannes, hasard, envoi_);
  if (pannes.tardive) retard += kRetard * 1e6;
  Pose(retour_, envoi_, horloge_->Maintenant() + retard);
}

void LigneSérie::Réveille(double retard) {
  réveil_ = horloge_->Maintenant() + retard;
  horloge_->Réveille(réveil_);
}

void LigneSérie::Pose(Voie& voie, std::string_view octets, double départ) {
  voie.libre = std::max(voie.libre, départ);
  for (const char octet : octets) {
    voie.libre += DuréeOctet();
    voie.octets.push_back({voie.libre, octet});
  }
  horloge_->Réveille(voie.Arrivée());
}

double LigneSérie::Voie::Arrivée() const noexcept {
  return octets.empty() ? kJamais : octets.front().heure;
}

char LigneSérie::Voie::Retire() {
  const char octet = octets.front().octet;
  octets.erase(octets.begin());
  return octet;
}

double LigneSérie::Prochaine() const noexcept {
  return std::min({aller_.Arrivée(), retour_.Arrivée(), réveil_});
}

// A wake-up asked for the instant of a byte comes behind it.
void LigneSérie::Arrive() {
  const double heure = Prochaine();
  if (retour_.Arrivée() == heure) {
    const char octet = retour_.Retire();
    if (!pannes.muette && !pannes.débranchée && !pannes.babillarde) Garde(octet);
  } else if (aller_.Arrivée() == heure) {
    const char octet = aller_.Retire();
    if (!pannes.sourde && !pannes.débranchée) appareil->Reçoit({&octet, 1}, *this);
  } else {
    réveil_ = kJamais;
    appareil->Réveil(*this);
  }
}

void LigneSérie::Garde(char octet) {
  if (reçus_.size() < kTampon) reçus_ += octet;
}

void LigneSérie::Babille() {
  const double durée = kBitsParOctet * 1e6 / vitesse_;
  for (; babil_ + durée <= horloge_->Maintenant(); babil_ += durée) {
    Garde(hasard.Octet());
  }
}

}  // namespace zuma::sim
