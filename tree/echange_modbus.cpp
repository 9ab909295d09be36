#include "tree/echange_modbus.h"

#include "core/echec.h"
#include "core/outils_communs.h"
#include "core/outils_modbus.h"
#include "tree/carte.h"
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
    if (canal->NuméroCanal() != kCanalErreur) travail(canal);
  }
}

Valeurs DonnéesAEcrire(const Fonction& bloc, SortiesEnvoyées& sorties) {
  Valeurs données;
  sorties.Vide();
  if (bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques &&
      bloc.ModbusFonction() == kEcritureDeMots) {
    PourChaqueCanal(bloc, [&](const CanalRef& canal) {
      données.Ajoute(OutilsModbus::Registre(canal->ValeurCanal()));
      sorties.Ajoute(canal);
    });
  }
  return données;
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
  PourChaqueFrère(bloc, bloc.ModbusAdresse(),
                  [&](Doute& doute) { doute.SansRéponse(envoi, maintenant); });
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

void Envoie(Fonction& bloc) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  const LiaisonSérieRef liaison = bloc.RS();
  if (bloc.Parent() != nullptr) {
    (void)bloc.Parent()->Reprise().Ouverte(*liaison, *bloc.LeTimer());
  }
  if (EstLaissé(bloc, *liaison)) return;
  const Valeurs données = DonnéesAEcrire(bloc, échange.sorties);
  OutilsModbus::ConstruitQuestion(bloc.ModbusAdresse(), bloc.ModbusFonction(),
                                  bloc.ModbusRegistreDeDepart(), bloc.LesCanaux().Count() - 1,
                                  données.Toutes(), échange.question);
  (void)liaison->LitTampon();
  échange.réponse.clear();
  échange.sorties.Partent();
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

void DécodeAnalogique(const Fonction& bloc, const Valeurs& mots) {
  PourChaqueCanal(bloc, [&](const CanalRef& canal) {
    canal->ValeurCanal(mots.Item(canal->NuméroCanal() + 1));
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
// told in the record on each answer, and must not hold the bus.
void Accepte(Fonction& bloc, const Valeurs& valeurs) {
  EchangeModbus& échange = bloc.Modbus_Echange();
  bloc.RafraichissementEnCours(false);
  if (EntendTard(bloc, bloc.ModbusAdresse())) return;  // perhaps the answer to a former question
  échange.compteurErreurs = 0;
  échange.sorties.Arrivent();
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

// The question's own answer may still come: what came was not it.
bool Manque(Résultat résultat) {
  return résultat == Résultat::Incomplète || résultat == Résultat::Inconnue ||
         résultat == Résultat::AutreEsclave || résultat == Résultat::AutreFonction;
}

bool EstDUneAutre(Résultat résultat) {
  return résultat == Résultat::AutreEsclave || résultat == Résultat::AutreFonction;
}

// What a slave says while something else is asked is its late answer, when one is due. It goes as
// soon as it is whole: the answer that is waited for may touch it.
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

// A slave whose answer is spoilt still speaks to its end, and hears nothing meanwhile.
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
  const double attente = (maintenant - échange.heureDEnvoi) / 1000;
  if (résultat == Résultat::Bonne && attente <= kAttenteMaximale) {
    Accepte(bloc, valeurs);
  } else if (attente > kAttenteMaximale) {
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
    SurLaLigne(bloc, [&] { Envoie(bloc); });
  }
}

}  // namespace zuma::echange_modbus
