#include "tree/echange_modbus.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/echec.h"
#include "base/outils_communs.h"
#include "base/outils_modbus.h"
#include "base/poursuite.h"
#include "tree/carte.h"
#include "tree/fonction.h"

namespace zuma::echange_modbus {
namespace {

using OutilsModbus::FormeValeurs;
using OutilsModbus::Résultat;
using OutilsModbus::Valeurs;

constexpr std::int32_t kErreursTolérées = 9;
constexpr std::int16_t kCanalErreur = -1;

// The functions that write: what one carries, and how many of them.
struct Ecriture {
  std::int32_t fonction;
  bool bobines;  ///< coils, and not registers
  bool seule;    ///< one channel a write, and not the whole block
};
constexpr std::array<Ecriture, 4> kEcritures{{
    {5, true, true},
    {6, false, true},
    {15, true, false},
    {16, false, false},
}};

bool EstVoie(const CanalRef& canal) {
  return canal->NuméroCanal() != kCanalErreur;
}

// A channel that fails is told after the others had their turn.
template <class Travail>
void PourChaqueCanal(const Fonction& bloc, Travail&& travail) {
  Poursuite chacun;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (EstVoie(canal)) chacun([&] { travail(canal); });
  }
  chacun.Termine();
}

bool EstLogique(const Fonction& bloc) {
  return bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctEntréesLogiques ||
         bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
}

bool EstSortie(const Fonction& bloc) {
  return bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques ||
         bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
}

const Ecriture* EcritureDe(const Fonction& bloc) {
  const auto* écriture = std::ranges::find(kEcritures, bloc.ModbusFonction(), &Ecriture::fonction);
  return écriture == kEcritures.end() || !EstSortie(bloc) ? nullptr : écriture;
}

// What a coil or register takes: a coil anything but 0 as on, a register of a logic output 1 for
// on.
std::uint16_t Mot(const Canal& canal, const Ecriture& écriture) {
  const double valeur = canal.ValeurCanal();
  if (std::isnan(valeur)) throw Echec(Numéro::Dépassement);
  const bool logique = canal.TypeCanal() == ENUM_TYPE_FONCTION::FctSortiesLogiques;
  if (écriture.bobines || logique) return valeur != 0 ? 1 : 0;
  return OutilsModbus::Registre(valeur);
}

/// What a question says of registers.
struct Demande {
  std::int32_t registre;
  Valeurs données;
  Poursuite impossibles;  ///< the channels without a value that goes
};

// Hazard: a set point that cannot go must not hold up the stops of the others. Its place takes 0.
void AjouteAuBloc(Demande& demande, SortiesEnvoyées& sorties, const CanalRef& canal,
                  const Ecriture& écriture) {
  std::uint16_t mot = 0;
  if (demande.impossibles([&] { mot = Mot(*canal, écriture); })) {
    sorties.Ajoute(canal);
  } else {
    sorties.AjouteSansValeur(canal);
  }
  demande.données.Ajoute(mot);
}

// A write of one channel goes to the place that the channel's number tells; a write of all lays
// them side by side, in the order of their numbers.
Demande DemandeDe(const Fonction& bloc, SortiesEnvoyées& sorties) {
  Demande demande{.registre = bloc.ModbusRegistreDeDepart(), .données = {}, .impossibles = {}};
  const Ecriture* écriture = EcritureDe(bloc);
  if (écriture == nullptr) {
    sorties.Vide();
  } else if (écriture->seule) {
    sorties.Suit(bloc.LesCanaux(), &EstVoie);
    if (const Canal* canal = sorties.Suivante()) {
      demande.registre += canal->NuméroCanal();
      demande.données.Ajoute(Mot(*canal, *écriture));
    }
  } else {
    sorties.Vide();
    for (const CanalRef& canal : bloc.LesCanaux()) {
      if (EstVoie(canal)) AjouteAuBloc(demande, sorties, canal, *écriture);
    }
  }
  return demande;
}

// Milliseconds, the limit included.
double AttenteMaximale(const Fonction& bloc) {
  constexpr double kSansCarte = 50;
  return bloc.Parent() == nullptr ? kSansCarte : bloc.Parent()->TimeOutModbus();
}

// The blocks of the same slave on the same board share its answers, and the doubt about them.
template <class Travail>
void PourChaqueFrère(Fonction& bloc, std::int32_t esclave, Travail&& travail) {
  if (bloc.Parent() == nullptr) return travail(bloc.Modbus_Echange().doute);
  for (const FonctionRef& frère : bloc.Parent()->LesFonctions()) {
    if (frère->ModbusAdresse() == esclave) travail(frère->Modbus_Echange().doute);
  }
}

void ResteSansRéponse(Fonction& bloc) {
  const double envoi = bloc.Modbus_Echange().heureDEnvoi;
  const double maintenant = bloc.LeTimer()->LitMicrosecondes();
  const double attente = AttenteMaximale(bloc) * 1000;
  PourChaqueFrère(bloc, bloc.ModbusAdresse(),
                  [&](Doute& doute) { doute.SansRéponse(envoi, maintenant, attente); });
}

// True when that slave was in doubt: it is left alone from now on.
bool EntendTard(Fonction& bloc, std::int32_t esclave) {
  const double maintenant = bloc.LeTimer()->LitMicrosecondes();
  bool enDoute = false;
  PourChaqueFrère(bloc, esclave, [&](Doute& doute) {
    enDoute = enDoute || doute.EnDoute();
    doute.Entend(maintenant);
  });
  return enDoute;
}

// A stop does not wait for a slave that is left alone.
bool EstLaissé(Fonction& bloc, ZED_LiaisonSerie& liaison) {
  const EchangeModbus& échange = bloc.Modbus_Echange();
  if (!échange.doute.EnDoute()) return false;
  const double maintenant = bloc.LeTimer()->LitMicrosecondes();
  bool laissé = false;
  PourChaqueFrère(bloc, bloc.ModbusAdresse(),
                  [&](Doute& doute) { laissé = doute.Attend(maintenant) || laissé; });
  if (laissé && !liaison.LitTampon().empty()) (void)EntendTard(bloc, bloc.ModbusAdresse());
  return laissé && !échange.sorties.ArrêtDonné();
}

// What could not go is told by the caller, once the rest has left.
Poursuite Envoie(Fonction& bloc) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  const LiaisonSérieRef liaison = bloc.RS();
  if (bloc.Parent() != nullptr) {
    (void)bloc.Parent()->Reprise().Ouverte(*liaison, *bloc.LeTimer());
  }
  if (EstLaissé(bloc, *liaison)) return {};
  const Demande demande = DemandeDe(bloc, échange.sorties);
  OutilsModbus::ConstruitQuestion(bloc.ModbusAdresse(), bloc.ModbusFonction(), demande.registre,
                                  bloc.LesCanaux().Count() - 1, demande.données.Toutes(),
                                  échange.question);
  (void)liaison->LitTampon();
  échange.réponse.clear();
  échange.sorties.Partent();
  liaison->EcritPort(échange.question);
  bloc.RafraichissementEnCours(true);
  échange.heureDEnvoi = bloc.LeTimer()->LitMicrosecondes();
  return demande.impossibles;
}

double Logique(bool vrai) {
  return vrai ? kVrai : 0;
}

// Whole block: the first two bytes, each from its high bit down, are the channels from 0 on. An
// answer of one byte has only the first eight.
void DécodeParFonction(const Fonction& bloc, const Valeurs& octets) {
  PourChaqueCanal(bloc, [&](const CanalRef& canal) {
    const std::int32_t numéro = canal->NuméroCanal();
    if (numéro < 0 || numéro > 15) throw Echec(Numéro::IndiceHorsPlage);
    const std::uint16_t octet = octets.Item(numéro / 8 + 1);
    canal->ValeurCanal(Logique(OutilsCommuns::BitDeMot(octet, 7 - numéro % 8)));
  });
}

// Channel by channel: the low byte of the channel's own register.
void DécodeParCanal(const Fonction& bloc, const Valeurs& octets) {
  PourChaqueCanal(bloc, [&](const CanalRef& canal) {
    canal->ValeurCanal(Logique(octets.Item(canal->NuméroCanal() * 2 + 2) != 0));
  });
}

// A register is 16 bits without a sign, unless the channel's row says otherwise.
void DécodeAnalogique(const Fonction& bloc, const Valeurs& mots) {
  PourChaqueCanal(bloc, [&](const CanalRef& canal) {
    const std::uint16_t mot = mots.Item(canal->NuméroCanal() + 1);
    canal->ValeurCanal(canal->RegistreSigné() ? static_cast<std::int16_t>(mot) : mot);
  });
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
// told in the record on each answer, and must not hold the bus nor the error channel. An answer in
// doubt says nothing: no value, no arrival, no end of the error.
void Accepte(Fonction& bloc, const Valeurs& valeurs) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  bloc.RafraichissementEnCours(false);
  if (EntendTard(bloc, bloc.ModbusAdresse())) return;  // perhaps the answer to a former question
  échange.compteurErreurs = 0;
  échange.sorties.Arrivent();
  Poursuite chacun;
  chacun([&] { Décode(bloc, valeurs); });
  chacun([&] { PublieErreur(bloc, false); });
  chacun.Termine();
}

// A question that cannot be made or sent, or a link that fails, counts like a silence, so that the
// error channel tells it; the board then gives the turn to the next block.
template <class Travail>
void SurLaLigne(Fonction& bloc, Travail&& travail) {
  try {
    travail();
  } catch (...) {
    CompteErreur(bloc);
    throw;
  }
}

// The question's own answer may still come: what came was not it.
bool Manque(Résultat résultat) {
  return résultat == Résultat::Incomplète || résultat == Résultat::Inconnue ||
         résultat == Résultat::AutreEsclave || résultat == Résultat::AutreFonction;
}

bool EstDUneAutre(Résultat résultat) {
  return résultat == Résultat::AutreEsclave || résultat == Résultat::AutreFonction;
}

// What a slave says while something else is asked is its late answer, when one is due. It goes as
// soon as it is whole and costs the slave that is asked nothing: the answer that is waited for may
// touch it.
Résultat DécodeSansLesTardives(Fonction& bloc, Valeurs& valeurs) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  const FormeValeurs forme = EstLogique(bloc) ? FormeValeurs::Octets : FormeValeurs::Mots;
  for (;;) {
    const Résultat résultat =
        OutilsModbus::DécodeRéponse(échange.réponse, échange.question, &valeurs, forme);
    if (!EstDUneAutre(résultat)) return résultat;
    const std::size_t longueur = OutilsModbus::LongueurRéponse(échange.réponse);
    const bool tardive =
        longueur != 0 && EntendTard(bloc, static_cast<std::uint8_t>(échange.réponse[0]));
    if (!tardive) return résultat;
    échange.réponse.erase(0, longueur);
  }
}

// A late answer that is spoilt or cut ends nothing either, while the exchange has time.
void Rejette(Fonction& bloc, Résultat résultat, bool tard) {
  Octets& réponse = bloc.Modbus_Echange().réponse;
  if (EstDUneAutre(résultat) && EntendTard(bloc, static_cast<std::uint8_t>(réponse[0])) && !tard) {
    réponse.clear();
    return;
  }
  if (Manque(résultat)) ResteSansRéponse(bloc);
  CompteErreur(bloc);
}

// A slave whose answer is spoilt still speaks to its end, and hears nothing meanwhile: the exchange
// goes on until the line has been silent for 3.5 bytes, or to its time-out. Under noise the
// questions would else pile up in the port, with a stop behind them.
bool EstFinie(Fonction& bloc, double maintenant) {
  return maintenant - bloc.Modbus_Echange().heureDuDernierOctet >=
         OutilsModbus::Silence(bloc.RS()->VitesseSérie());
}

void ChercheRéponse(Fonction& bloc) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  Octets reçus;
  SurLaLigne(bloc, [&] { reçus = bloc.RS()->LitTampon(); });
  const double maintenant = bloc.LeTimer()->LitMicrosecondes();
  if (!reçus.empty()) échange.heureDuDernierOctet = maintenant;
  échange.réponse += reçus;
  Valeurs valeurs;
  const Résultat résultat = DécodeSansLesTardives(bloc, valeurs);
  const bool àTemps = (maintenant - échange.heureDEnvoi) / 1000 <= AttenteMaximale(bloc);
  if (résultat == Résultat::Bonne && àTemps) {
    Accepte(bloc, valeurs);
  } else if (!àTemps) {
    Rejette(bloc, résultat, true);
  } else if (résultat != Résultat::Incomplète && EstFinie(bloc, maintenant)) {
    Rejette(bloc, résultat, false);
  }
}

}  // namespace

void Rafraîchit(Fonction& bloc) {
  if (bloc.RafraichissementEnCours()) {
    ChercheRéponse(bloc);
  } else {
    Poursuite impossibles;
    SurLaLigne(bloc, [&] { impossibles = Envoie(bloc); });
    impossibles.Termine();
  }
}

}  // namespace zuma::echange_modbus
