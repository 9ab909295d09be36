#include "sim/testeur_cbr_simule.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sim/journal_borne.h"

namespace zuma::sim {
namespace {

struct Essai {
  double vitesse;  ///< millimetres per second
  double raideur;  ///< of the specimen, force per millimetre
  double rupture;  ///< displacement at which it gives way
};
// By kind: CBR, Marshall, UU.
constexpr std::array<Essai, 3> kEssais{{{1.27 / 60, 4, 12}, {50.8 / 60, 3, 5}, {1.0 / 60, 0.2, 8}}};
constexpr double kCourse = 60;   // millimetres
constexpr double kRésidu = 0.3;  // share of the force left once the specimen gave way

constexpr std::string_view kEntête = "UTEST";
constexpr std::size_t kLongueurDemande = 10;

enum Fonction : int { kIdentifie = 1, kDémarre = 2, kArrête = 3, kRemetAZéro = 7, kMesure = 11 };

char Somme(std::string_view octets) {
  char somme = 0;
  for (const char octet : octets) somme = static_cast<char>(somme ^ octet);
  return somme;
}

void AjouteEntier(Octets& octets, std::uint32_t entier) {
  for (unsigned décalage = 0; décalage < 32; décalage += 8) {
    octets += static_cast<char>(entier >> décalage & 0xFFU);
  }
}

}  // namespace

void TesteurCBRSimulé::Reçoit(std::string_view octets, LigneSérie& ligne) {
  if (vitesseDeLigne != 0 && ligne.Vitesse() != vitesseDeLigne) return;
  Note(entrée_, octets);
  for (auto début = entrée_.find(kEntête); début != Octets::npos; début = entrée_.find(kEntête)) {
    entrée_.erase(0, début);
    if (entrée_.size() < kLongueurDemande) return;
    const std::string demande = entrée_.substr(0, kLongueurDemande);
    entrée_.erase(0, kLongueurDemande);
    if (Somme(demande) == 0) Traite(static_cast<unsigned char>(demande[8]), ligne);
  }
}

void TesteurCBRSimulé::Traite(int fonction, LigneSérie& ligne) {
  if (fonction != kMesure) Note(commandes_, fonction);
  if (fonction == kIdentifie) {
    const std::array<char, 2> données{static_cast<char>(genre_), 1};
    Répond(fonction, {données.data(), données.size()}, ligne);
  } else if (fonction == kMesure) {
    Répond(fonction, Mesures(), ligne);
  } else if (fonction == kArrête) {
    Arrête();
  } else if (fonction == kRemetAZéro) {
    Arrête();
    atteint_ = 0;
    prêt_ = true;
  } else if (fonction == kDémarre && prêt_) {
    DémarreAuPupitre();
  }
}

void TesteurCBRSimulé::DémarreAuPupitre() {
  départ_ = horloge_.Maintenant();
  enMarche_ = true;
}

void TesteurCBRSimulé::Arrête() {
  atteint_ = Déplacement();
  enMarche_ = false;
  prêt_ = false;
}

bool TesteurCBRSimulé::EnMarche() const {
  return enMarche_ && Déplacement() < kCourse;
}

double TesteurCBRSimulé::Déplacement() const {
  if (!enMarche_) return atteint_;
  const double vitesse = kEssais[static_cast<std::size_t>(genre_)].vitesse;
  return std::min(kCourse, atteint_ + vitesse * (horloge_.Maintenant() - départ_) / 1e6);
}

double TesteurCBRSimulé::Force() const {
  const Essai& essai = kEssais[static_cast<std::size_t>(genre_)];
  const double course = Déplacement();
  const double part = course < essai.rupture ? 1 : kRésidu;
  return précharge + part * essai.raideur * std::min(course, essai.rupture);
}

Octets TesteurCBRSimulé::Mesures() const {
  Octets données{static_cast<char>(EnMarche() ? 2 : 0), 0, 0, 0};
  AjouteEntier(données, static_cast<std::uint32_t>(std::lround(Force() * 100'000)));
  AjouteEntier(données, static_cast<std::uint32_t>(std::lround(Déplacement() * 1000)));
  return données;
}

void TesteurCBRSimulé::Répond(int fonction, std::string_view données, LigneSérie& ligne) const {
  Octets trame(kEntête);
  trame += '\0';
  trame += static_cast<char>(kLongueurDemande + données.size());
  trame += '\0';
  trame += static_cast<char>(fonction);
  trame += données;
  trame += Somme(trame);
  ligne.Emet(trame, latence);
}

}  // namespace zuma::sim
