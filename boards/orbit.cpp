#include "boards/orbit.h"

#include <limits>
#include <string>
#include <string_view>

#include "base/garde.h"
#include "boards/operations.h"

namespace zuma {
namespace {

// Key of the channel that the block read last: it reads one a cycle.
struct DernierLu : EtatPilote {
  std::string clé;
};

constexpr std::int32_t kRéseau = 0;
constexpr int kRemisesAZéro = 2;
constexpr double kAttenteRemise = 500'000;  // microseconds before modules take an address
constexpr double kPleineEchelleOrbit = 32768;
constexpr std::string_view kAucunModule =
    "Erreur d'initialisation (Aucun de module détecté - probablement débranché) du carte Solartron";

// Modules count from 1 on the network, channels from 0 in the configuration.
std::int32_t NuméroDeModule(const Canal& canal) {
  return canal.NuméroCanal() + 1;
}

// The start of the board starts its channels and reads none: a reconnection never leads to another.
void Reconnecte(const Canal& canal) {
  canal.LaPlateforme().orbit->DisconnectFromOrbitNetworks();
  Pointeur<Fonction>(canal.Parent())->LaCarte()->Initialise();
}

// The channel after the one of that key; the first one at the end, or when no channel bears it.
CanalRef Suivant(const Canals& canaux, std::string_view clé) {
  bool vu = false;
  for (const CanalRef& canal : canaux) {
    if (vu) return canal;
    vu = canal->Key() == clé;
  }
  return canaux.Count() == 0 ? CanalRef() : *canaux.begin();
}

}  // namespace

void orbit::DémarreCarte(Carte& carte) {
  RéseauOrbit& réseau = *carte.LaPlateforme().orbit;
  if (réseau.ConnectToOrbitNetworks() <= 0) {
    Consigne(carte, Forme::Méthode, "Initialise", kAucunModule);
  }
  for (int i = 0; i < kRemisesAZéro; ++i) (void)réseau.OrbitRst(kRéseau);
  ZED_Timer& timer = *carte.LeTimer();
  const double fin = timer.LitMicrosecondes() + kAttenteRemise;
  while (timer.LitMicrosecondes() < fin) {
  }
}

void orbit::DémarreCanal(Canal& canal) {
  const bool servi = canal.EnService();
  canal.EnService(false);
  const std::int32_t refus = canal.LaPlateforme().orbit->OrbitSetaddr(
      kRéseau, NuméroDeModule(canal), canal.NuméroDeSérie());
  canal.EnService(refus == 0);
  if (refus == 0 || !servi) return;
  Consigne(canal, Forme::Méthode, "Initialise",
           "Module Orbit '" + canal.NuméroDeSérie() + "' refusé (réponse " + std::to_string(refus) +
               ") : canal hors service jusqu'au prochain démarrage");
}

void orbit::RafraîchitBloc(Fonction& bloc) {
  std::string& dernier = bloc.Etat<DernierLu>().clé;
  const CanalRef canal = Suivant(bloc.LesCanaux(), dernier);
  if (!canal) return;
  canal->MetàJour();
  dernier = canal->Key();
}

// A failed reading counts as the last good one, so that a mean never takes in a 0 that no probe
// gave; without any good one there is no mean, and the value keeps its age. Once the reconnection
// has left the channel out of service its module is not asked again: each attempt would hold the
// pass for another half second.
void orbit::LitCanal(Canal& canal) {
  RéseauOrbit& réseau = *canal.LaPlateforme().orbit;
  double dernière = canal.ValeurCanal() * kPleineEchelleOrbit / kPleineEchelle;
  bool lue = false;
  std::int32_t reste = canal.NbLecture();
  const auto convertit = [&] {
    std::int32_t compte = 0;
    if (réseau.OrbitRead1(kRéseau, NuméroDeModule(canal), compte) == RéseauOrbit::kEchecDeLecture) {
      Reconnecte(canal);
    } else {
      dernière = compte;
      lue = true;
    }
  };
  canal.LitMoyenne(
      [&](std::int16_t&) {
        if (canal.EnService()) convertit();
        const bool aucune = --reste == 0 && !lue;
        return aucune ? std::numeric_limits<double>::quiet_NaN() : dernière;
      },
      kPleineEchelleOrbit);
}

namespace pilotes {

// The network stays connected when its board goes away: another frame may be using it.
const OpérationsCarte kOrbitCarte{.démarre = &orbit::DémarreCarte};
const OpérationsPilote kOrbit{.rafraîchitBloc = &orbit::RafraîchitBloc,
                              .démarreCanal = &orbit::DémarreCanal,
                              .rafraîchitCanal = &orbit::LitCanal};

}  // namespace pilotes
}  // namespace zuma
