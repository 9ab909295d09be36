#include "tree/echange_modbus.h"

#include "core/echec.h"
#include "core/outils_communs.h"
#include "core/outils_modbus.h"
#include "tree/fonction.h"

namespace zuma::echange_modbus {
namespace {

using OutilsModbus::FormeValeurs;
using OutilsModbus::Résultat;
using OutilsModbus::Valeurs;

constexpr double kAttenteMaximale = 50;  // milliseconds, the limit included
constexpr std::int32_t kErreursTolérées = 9;
constexpr std::int32_t kEcritureDeMots = 0x10;
constexpr std::int16_t kCanalErreur = -1;

template <class Travail>
void PourChaqueCanal(const Fonction& bloc, Travail&& travail) {
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (canal->NuméroCanal() != kCanalErreur) travail(*canal);
  }
}

Valeurs DonnéesAEcrire(const Fonction& bloc) {
  Valeurs données;
  if (bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques &&
      bloc.ModbusFonction() == kEcritureDeMots) {
    PourChaqueCanal(
        bloc, [&](Canal& canal) { données.Ajoute(OutilsModbus::Registre(canal.ValeurCanal())); });
  }
  return données;
}

void Envoie(Fonction& bloc) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  const Valeurs données = DonnéesAEcrire(bloc);
  OutilsModbus::ConstruitQuestion(bloc.ModbusAdresse(), bloc.ModbusFonction(),
                                  bloc.ModbusRegistreDeDepart(), bloc.LesCanaux().Count() - 1,
                                  données.Toutes(), échange.question);
  const LiaisonSérieRef liaison = bloc.RS();
  (void)liaison->LitTampon();
  échange.réponse.clear();
  liaison->EcritPort(échange.question);
  bloc.RafraichissementEnCours(true);
  échange.heureDEnvoi = bloc.LeTimer()->LitMicrosecondes();
}

bool EstLogique(const Fonction& bloc) {
  return bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctEntréesLogiques ||
         bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
}

double Logique(bool vrai) {
  return vrai ? kVrai : 0;
}

// Whole block: the first two bytes, each from its high bit down, are the channels from 0 on. An
// answer of one byte has only the first eight.
void DécodeParFonction(const Fonction& bloc, const Valeurs& octets) {
  PourChaqueCanal(bloc, [&](Canal& canal) {
    const std::int32_t numéro = canal.NuméroCanal();
    if (numéro < 0 || numéro > 15) throw Echec(Numéro::IndiceHorsPlage);
    const std::uint16_t octet = octets.Item(numéro / 8 + 1);
    canal.ValeurCanal(Logique(OutilsCommuns::BitDeMot(octet, 7 - numéro % 8)));
  });
}

// Channel by channel: the low byte of the channel's own register.
void DécodeParCanal(const Fonction& bloc, const Valeurs& octets) {
  PourChaqueCanal(bloc, [&](Canal& canal) {
    canal.ValeurCanal(Logique(octets.Item(canal.NuméroCanal() * 2 + 2) != 0));
  });
}

void DécodeAnalogique(const Fonction& bloc, const Valeurs& mots) {
  PourChaqueCanal(bloc,
                  [&](Canal& canal) { canal.ValeurCanal(mots.Item(canal.NuméroCanal() + 1)); });
}

// Only a read carries values: the answer to a write leaves the channels as they are.
void Décode(const Fonction& bloc, const Valeurs& valeurs) {
  if (valeurs.Nombre() == 0) return;
  if (!EstLogique(bloc)) {
    DécodeAnalogique(bloc, valeurs);
  } else if (bloc.MAJParFonction()) {
    DécodeParFonction(bloc, valeurs);
  } else {
    DécodeParCanal(bloc, valeurs);
  }
}

void PublieErreur(Fonction& bloc, bool erreur) {
  bloc.CanalErreurModbus()->ValeurCanal(Logique(erreur));
}

void CompteErreur(Fonction& bloc) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  bloc.RafraichissementEnCours(false);
  if (++échange.compteurErreurs <= kErreursTolérées) return;
  échange.compteurErreurs = 0;
  PublieErreur(bloc, true);
}

// The counters come first: a channel number beyond the answer is a failure of the configuration,
// told in the record on each answer, and must not hold the bus.
void Accepte(Fonction& bloc, const Valeurs& valeurs) {
  bloc.Modbus_Echange().compteurErreurs = 0;
  bloc.RafraichissementEnCours(false);
  Décode(bloc, valeurs);
  PublieErreur(bloc, false);
}

// A link that fails counts like a silence, so that the error channel tells it.
template <class Travail>
void SurLaLigne(Fonction& bloc, Travail&& travail) {
  try {
    travail();
  } catch (...) {
    CompteErreur(bloc);
    throw;
  }
}

void ChercheRéponse(Fonction& bloc) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  SurLaLigne(bloc, [&] { échange.réponse += bloc.RS()->LitTampon(); });
  Valeurs valeurs;
  const Résultat résultat =
      OutilsModbus::DécodeRéponse(échange.réponse, échange.question, &valeurs,
                                  EstLogique(bloc) ? FormeValeurs::Octets : FormeValeurs::Mots);
  const double attente = (bloc.LeTimer()->LitMicrosecondes() - échange.heureDEnvoi) / 1000;
  if (attente > kAttenteMaximale) {
    CompteErreur(bloc);
  } else if (résultat == Résultat::Bonne) {
    Accepte(bloc, valeurs);
  } else if (résultat != Résultat::Incomplète) {
    CompteErreur(bloc);
  }
}

}  // namespace

void Rafraîchit(Fonction& bloc) {
  if (bloc.RafraichissementEnCours()) {
    ChercheRéponse(bloc);
  } else {
    SurLaLigne(bloc, [&] { Envoie(bloc); });
  }
}

}  // namespace zuma::echange_modbus
