// The board that holds a CBR tester: its channels, and the machine's start and stop.
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "instruments/cbr_utest.h"
#include "instruments/instrument.h"
#include "instruments/operations.h"
#include "instruments/reglages_gardes.h"

namespace zuma::instruments {
namespace {

/// The tester, whether its logic output asked it to run at the last look, and whether a machine
/// that runs without that was told.
class PiloteCBR : public PiloteInstrument<CBR_UTEST_CLASS> {
 public:
  using PiloteInstrument::PiloteInstrument;
  std::optional<bool> marcheDemandée;
  bool marcheDite = false;
};

constexpr double kEntreDeuxRegards = 0.001;  // seconds
constexpr int kRegards = 150;                // more than the time that the machine has to answer

PiloteCBR& Pilote_(Carte& carte) {
  return carte.PiloteDe<PiloteCBR>(0);
}

constexpr std::array<Voie<CBR_UTEST_CLASS>, 4> kVoies{{
    {ENUM_TYPE_FONCTION::FctEntréesAnalogiques, 0,
     [](const CBR_UTEST_CLASS& testeur) { return testeur.ForceCourante(); }},
    {ENUM_TYPE_FONCTION::FctEntréesAnalogiques, 1,
     [](const CBR_UTEST_CLASS& testeur) { return testeur.DeplacementCourant(); }},
    {ENUM_TYPE_FONCTION::FctEntréesLogiques, 0,
     [](const CBR_UTEST_CLASS& testeur) { return Etat(testeur.IsRunning()); }},
    {ENUM_TYPE_FONCTION::FctEntréesLogiques, 1,
     [](const CBR_UTEST_CLASS& testeur) { return Etat(testeur.Timeout()); }},
}};

// Only the true level asks for a run; anything else is a stop.
Canal* LaSortie(Carte& carte) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() != ENUM_TYPE_FONCTION::FctSortiesLogiques) continue;
    for (const CanalRef& canal : bloc->LesCanaux()) {
      if (canal->NuméroCanal() == 0) return canal.Brut();
    }
  }
  return nullptr;
}

bool MarcheDemandée(const Canal* sortie) {
  return sortie != nullptr && sortie->ValeurCanal() == kVrai;
}

// Goes on with the exchange until `assez`, for as long as the machine has to answer.
template <class Assez>
void Patiente(Carte& carte, CBR_UTEST_CLASS& testeur, Assez&& assez) {
  for (int i = 0; !assez() && i < kRegards; ++i) {
    testeur.Refresh();
    carte.LaPlateforme().horloge->Dort(kEntreDeuxRegards);
  }
}

// A stop must not wait for a pass that may never come: it leaves in this one, once the exchange
// that is going on has ended or run out of time, and what the machine answers is known at the end.
// A start that it overtakes is withdrawn, since the tester alone would carry it out behind the
// stop.
void Arrête(Carte& carte, CBR_UTEST_CLASS& testeur) {
  testeur.AnnuleMarche();
  if (testeur.ArrêtDû()) return;  // the tester sends it again by itself
  testeur.Arrete();
  Patiente(carte, testeur, [&] { return !testeur.ArrêtEnAttente(); });
  Patiente(carte, testeur, [&] { return !testeur.ArrêtDû(); });
}

// What the channel holds when the board starts is where changes are counted from: a level left
// there moves nothing. Every writing of another level is a stop, whatever the channel held before,
// but for a machine that said within the last second that it stands still.
void TransmetLaCommande(Carte& carte, PiloteCBR& pilote) {
  Canal* const sortie = LaSortie(carte);
  if (sortie == nullptr) return;
  CBR_UTEST_CLASS& testeur = pilote.LInstrument();
  const bool baissée = sortie->PrendLaBaisse();
  const bool avant = pilote.marcheDemandée.value_or(MarcheDemandée(sortie));
  pilote.marcheDemandée = MarcheDemandée(sortie);
  if (baissée && (avant || !testeur.EstAuRepos())) Arrête(carte, testeur);
  // Looked at anew: an event served during the stop may have given another one.
  if (MarcheDemandée(sortie) && (baissée || !avant)) testeur.Marche();
}

// Once for each time that it is seen. It is not stopped: nobody asked for that, and its operator
// may have started it at its panel. A stop reaches it.
void DitLaMarcheSansOrdre(const Carte& carte, PiloteCBR& pilote) {
  const bool avant = std::exchange(pilote.marcheDite, pilote.LInstrument().TourneSansOrdre());
  if (avant || !pilote.marcheDite) return;
  Garde(carte, Forme::Méthode, "MetàJour", [] {
    throw Echec(Numéro::ErreurDeLObjet,
                "Testeur CBR : la machine tourne sans que ce programme l'ait mise en marche (à son "
                "pupitre, ou avant le démarrage). Elle n'est pas arrêtée pour autant : mettez sa "
                "sortie logique au repos, déclenchez l'arrêt, ou arrêtez-la à son pupitre");
  });
}

// A stop has reached the machine once it says so; a level, once the machine does what it asks.
void MarqueLaSortie(Canal* sortie, const CBR_UTEST_CLASS& testeur) {
  if (sortie == nullptr) return;
  if (testeur.ArrêtDû()) {
    sortie->OublieAtteint();
  } else if (testeur.EtatConnu()) {
    const bool suivie = testeur.IsRunning() == MarcheDemandée(sortie);
    suivie ? sortie->MarqueAtteint() : sortie->OublieAtteint();
  }
}

[[noreturn]] void RefuseLePort(const Carte& carte, const CBR_UTEST_CLASS& testeur) {
  throw Echec(Numéro::MatérielAbsent,
              "Testeur CBR : le port de « Configuration ModBus » = '" + carte.Configuration() +
                  (testeur.EtatCom() ? "' ne s'ouvre pas avec ces réglages, attendus comme "
                                       "'3,9600,N,8,1', ou un autre programme le tient"
                                     : "' n'existe pas sur cette machine") +
                  ", et il n'y a pas de fenêtre où en choisir un autre. Branchez le testeur : son "
                  "port est cherché chaque seconde. Ou corrigez ces réglages, puis redémarrez");
}

// A second start keeps the tester: the line that it holds is the only one by which the stop that
// begins its `Initialise` reaches a machine that runs. A machine that runs is told with the start.
void Démarre(Carte& carte) {
  PiloteCBR& pilote = Pilote_(carte);
  CBR_UTEST_CLASS& testeur = pilote.LInstrument();
  pilote.marcheDemandée = MarcheDemandée(LaSortie(carte));
  if (!testeur.Initialise(carte.Configuration())) RefuseLePort(carte, testeur);
  GardeLesRéglages(carte, testeur.Settings());
  Patiente(carte, testeur, [&] { return testeur.EtatConnu(); });
  DitLaMarcheSansOrdre(carte, pilote);
}

void Rafraîchit(Carte& carte) {
  PiloteCBR& pilote = Pilote_(carte);
  TransmetLaCommande(carte, pilote);
  const std::int32_t avant = pilote.LInstrument().Mesures();
  pilote.LInstrument().Refresh();
  DitLaMarcheSansOrdre(carte, pilote);
  MarqueLaSortie(LaSortie(carte), pilote.LInstrument());
  Publie<CBR_UTEST_CLASS>(carte, pilote.LInstrument(), kVoies,
                          pilote.LInstrument().Mesures() != avant);
}

}  // namespace

const OpérationsCarte kTesteurCBR{.démarre = &Démarre, .rafraîchit = &Rafraîchit};

}  // namespace zuma::instruments
