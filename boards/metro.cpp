#include "boards/metro.h"

#include <algorithm>
#include <optional>
#include <string>

#include "boards/ecoute_serie.h"
#include "boards/operations.h"
#include "boards/trames_serie.h"

namespace zuma {
namespace {

constexpr std::string_view kFinDeLigne = "\r\n";
constexpr std::int32_t kJaugesMaximum = 8;
constexpr double kRelance = 100'000;        // microseconds of silence before a gauge is asked again
constexpr double kRelanceMUX = 200'000;     // microseconds that an answer may take
constexpr double kRéouverture = 1'000'000;  // microseconds between two attempts on a lost line

char Capitale(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Characters 3 and 4 tell a measure.
bool EstMesure(std::string_view réponse) {
  return réponse.size() >= 4 && Capitale(réponse[2]) == 'M' && Capitale(réponse[3]) == 'W';
}

// Behind the multiplexer it is the blank at character 4.
bool EstMesureMUX(std::string_view réponse) {
  return réponse.size() >= 4 && réponse[3] == ' ';
}

bool Contrôle(std::int32_t numéro, ZED_LiaisonSerie& ligne, ZED_Timer& timer, double limite,
              bool (*estMesure)(std::string_view)) {
  const std::string texte = std::to_string(numéro);
  const auto envoie = [&](std::string_view commande) {
    ligne.EcritPort(texte + std::string(commande) + std::string(kFinDeLigne));
  };
  (void)ligne.LitTampon();
  envoie("E");
  envoie("");
  const double fin = timer.LitMicrosecondes() + limite;
  Octets réponse;
  while (timer.LitMicrosecondes() <= fin) {
    réponse += ligne.LitTampon();
    if (!réponse.ends_with(kFinDeLigne)) continue;
    const bool présente = estMesure(réponse);
    envoie(présente ? "E" : "D");
    return présente;
  }
  return false;
}

}  // namespace

bool metro::ContrôleCanal(std::int32_t numéro, ZED_LiaisonSerie& ligne, ZED_Timer& timer) {
  constexpr double kLimite = 6'000'000;
  return Contrôle(numéro, ligne, timer, kLimite, &EstMesure);
}

bool metro::ContrôleCanalMETRO_MUX2_4_8(std::int32_t numéro, ZED_LiaisonSerie& ligne,
                                        ZED_Timer& timer) {
  constexpr double kLimite = 3'000'000;
  return Contrôle(numéro, ligne, timer, kLimite, &EstMesureMUX);
}

namespace pilotes {
namespace {

using trames_serie::TableMETRO;

bool EstNuméroDeJauge(std::int32_t numéro) {
  return numéro >= 1 && numéro <= kJaugesMaximum;
}

// A channel that no gauge answers for would stay at its first value.
void ExigeLesNuméros(const Fonction& bloc) {
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (EstNuméroDeJauge(canal->NuméroCanal())) continue;
    throw Echec(Numéro::IndiceHorsPlage,
                DescriptionDEchec(Numéro::IndiceHorsPlage) + " : Numéro du Canal " +
                    std::to_string(canal->NuméroCanal()) + ", 1 à 8 attendu sur une ligne METRO");
  }
}

// A block without gauge goes out of service.
void TermineLeDémarrage(Fonction& bloc) {
  if (bloc.Etat<EtatMETRO>().Metro_CanalActif == 0) bloc.Enabled(false);
  bloc.Etat<EtatMETRO>().Metro_Temps = bloc.LeTimer()->LitMicrosecondes();
  ExigeLesNuméros(bloc);
}

void DémarreMETRO(Fonction& bloc) {
  ecoute_serie::OuvreLaLigne(bloc);
  for (std::int32_t n = 1; n <= kJaugesMaximum; ++n) {
    if (metro::ContrôleCanal(n, *bloc.RS(), *bloc.LeTimer()))
      bloc.Etat<EtatMETRO>().Metro_CanalActif = n;
  }
  TermineLeDémarrage(bloc);
}

// No gauge is made the active one, which takes the block out of service: its refresh does not look
// at that.
void DémarreMUX(Fonction& bloc) {
  ecoute_serie::OuvreLaLigne(bloc);
  auto& valides = bloc.Etat<EtatMETRO>().Metro_CanauxValides;
  valides.clear();
  for (std::int32_t n = 1; n <= bloc.LesCanaux().Count(); ++n) {
    if (metro::ContrôleCanalMETRO_MUX2_4_8(n, *bloc.RS(), *bloc.LeTimer())) valides.push_back(n);
  }
  TermineLeDémarrage(bloc);
}

// True on a line that was lost, by unplugging for instance: tried again every second.
bool EstPerdue(EtatMETRO& état, ZED_LiaisonSerie& ligne, double maintenant) {
  if (ligne.EtatPort() == 1) return false;
  if (état.Metro_Temps + kRéouverture < maintenant) {
    état.Metro_Temps = maintenant;
    état.tampon.clear();
    ecoute_serie::Rouvre(ligne);
  }
  return true;
}

// Entry of a channel in the table; none for a number that no gauge has.
std::optional<double>* Entrée(TableMETRO& table, const Canal& canal) {
  const std::int16_t numéro = canal.NuméroCanal();
  return EstNuméroDeJauge(numéro) ? &table[static_cast<std::size_t>(numéro)] : nullptr;
}

void DemandeMETRO(Fonction& bloc, double maintenant) {
  EtatMETRO& état = bloc.Etat<EtatMETRO>();
  état.Metro_Temps = maintenant;
  état.tampon.clear();
  bloc.RS()->EcritPort(std::to_string(état.Metro_CanalActif) + std::string(kFinDeLigne));
}

void RafraîchitMETRO(Fonction& bloc) {
  EtatMETRO& état = bloc.Etat<EtatMETRO>();
  if (état.Metro_CanalActif == 0) return;
  const LiaisonSérieRef ligne = bloc.RS();
  ecoute_serie::Relève(*ligne, état.tampon);
  const double maintenant = bloc.LeTimer()->LitMicrosecondes();
  if (EstPerdue(état, *ligne, maintenant)) return;
  TableMETRO table;
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (auto* entrée = Entrée(table, *canal)) *entrée = canal->ValeurCanal();
  }
  trames_serie::JaugesLues lues;
  const bool fini = trames_serie::Decortique_METRO(état.tampon, état.Metro_CanalActif, table, lues);
  for (const CanalRef& canal : bloc.LesCanaux()) {
    const auto* entrée = Entrée(table, *canal);
    if (entrée == nullptr || !*entrée) continue;
    canal->TientValeurCanal(**entrée);
    if (lues[static_cast<std::size_t>(canal->NuméroCanal())]) canal->DateLaLecture();
  }
  if (fini || état.Metro_Temps + kRelance < maintenant) DemandeMETRO(bloc, maintenant);
}

void DemandeMUX(Fonction& bloc, double maintenant) {
  EtatMETRO& état = bloc.Etat<EtatMETRO>();
  état.enCours = true;
  état.Metro_Temps = maintenant;
  état.tampon.clear();
  bloc.RS()->EcritPort(std::to_string(état.Metro_CanauxValides[état.rang]) +
                       bloc.LaPlateforme().réglages.finDeDemandeMETRO);
}

// The gauge behind the one that answered; behind the one asked when none did.
void AvanceMUX(EtatMETRO& état, std::optional<std::int32_t> répondu) {
  const auto& valides = état.Metro_CanauxValides;
  if (répondu) {
    const auto place = std::ranges::find(valides, *répondu);
    if (place != valides.end()) état.rang = static_cast<std::size_t>(place - valides.begin());
  }
  état.rang = (état.rang + 1) % valides.size();
}

void DonneAuCanal(const Fonction& bloc, std::int32_t numéro, double valeur) {
  for (const CanalRef& canal : bloc.LesCanaux()) {
    if (canal->NuméroCanal() == numéro) canal->ValeurCanal(valeur);
  }
}

// One gauge after the other, one request on the line at a time. A gauge that is silent or late
// loses its turn and keeps its value.
void RafraîchitMUX(Fonction& bloc) {
  EtatMETRO& état = bloc.Etat<EtatMETRO>();
  if (état.Metro_CanauxValides.empty()) return;
  const LiaisonSérieRef ligne = bloc.RS();
  ecoute_serie::Relève(*ligne, état.tampon);
  const double maintenant = bloc.LeTimer()->LitMicrosecondes();
  if (EstPerdue(état, *ligne, maintenant)) return;
  if (!état.enCours) {
    état.rang = 0;
    DemandeMUX(bloc, maintenant);
    return;
  }
  const bool enRetard = état.Metro_Temps + kRelanceMUX < maintenant;
  std::int32_t numéro = 0;
  double valeur = 0;
  const bool répondu = trames_serie::Decortique_METRO_MUX_2_4_8(état.tampon, numéro, valeur);
  if (!répondu && !enRetard) return;
  if (répondu && !enRetard) DonneAuCanal(bloc, numéro, valeur);
  AvanceMUX(état, répondu && !enRetard ? std::optional(numéro) : std::nullopt);
  DemandeMUX(bloc, maintenant);
}

}  // namespace

const OpérationsPilote kMETRO{.démarreBloc = &DémarreMETRO, .rafraîchitBloc = &RafraîchitMETRO};
const OpérationsPilote kMETRO_MUX{.démarreBloc = &DémarreMUX, .rafraîchitBloc = &RafraîchitMUX};

}  // namespace pilotes
}  // namespace zuma
