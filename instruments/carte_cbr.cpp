// The board that holds a CBR tester: its channels, and the machine's start and stop.
#include <array>
#include <optional>
#include <string>

#include "instruments/cbr_utest.h"
#include "instruments/instrument.h"
#include "instruments/operations.h"
#include "instruments/reglages_gardes.h"

namespace zuma::instruments {
namespace {

/// The tester and whether its logic output asked it to run at the last look.
class PiloteCBR : public PiloteInstrument<CBR_UTEST_CLASS> {
 public:
  using PiloteInstrument::PiloteInstrument;
  std::optional<bool> marcheDemandée;
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
bool MarcheDemandée(Carte& carte) {
  for (const FonctionRef& bloc : carte.LesFonctions()) {
    if (bloc->TypeDeFonction() != ENUM_TYPE_FONCTION::FctSortiesLogiques) continue;
    for (const CanalRef& canal : bloc->LesCanaux()) {
      if (canal->NuméroCanal() == 0) return canal->ValeurCanal() == kVrai;
    }
  }
  return false;
}

// A stop must not wait for a pass that may never come: it leaves in this one, once the exchange
// that is going on has ended or run out of time. A start that it overtakes is withdrawn, since the
// tester alone would carry it out behind the stop.
void Arrête(Carte& carte, CBR_UTEST_CLASS& testeur) {
  testeur.AnnuleMarche();
  testeur.Arrete();
  testeur.Refresh();
  for (int i = 0; testeur.ArrêtEnAttente() && i < kRegards; ++i) {
    carte.LaPlateforme().horloge->Dort(kEntreDeuxRegards);
    testeur.Refresh();
  }
}

// What the channel holds when the board starts is where changes are counted from: a level left
// there moves nothing.
void TransmetLaCommande(Carte& carte, PiloteCBR& pilote) {
  const bool demandée = MarcheDemandée(carte);
  const bool avant = pilote.marcheDemandée.value_or(demandée);
  pilote.marcheDemandée = demandée;
  if (demandée == avant) return;
  if (demandée) {
    pilote.LInstrument().Marche();
  } else {
    Arrête(carte, pilote.LInstrument());
  }
}

[[noreturn]] void RefuseLePort(const Carte& carte, const CBR_UTEST_CLASS& testeur) {
  throw Echec(Numéro::MatérielAbsent,
              "Testeur CBR : le port de « Configuration ModBus » = '" + carte.Configuration() +
                  (testeur.EtatCom() ? "' ne s'ouvre pas avec ces réglages, attendus comme "
                                       "'3,9600,N,8,1', ou un autre programme le tient"
                                     : "' n'existe pas sur cette machine") +
                  ", et il n'y a pas de fenêtre où en choisir un autre. Branchez le testeur ou "
                  "corrigez ces réglages, puis redémarrez : d'ici là rien n'est échangé");
}

// A second start keeps the tester: the line that it holds is the only one by which the stop that
// begins its `Initialise` reaches a machine that runs.
void Démarre(Carte& carte) {
  PiloteCBR& pilote = Pilote_(carte);
  pilote.marcheDemandée = MarcheDemandée(carte);
  if (!pilote.LInstrument().Initialise(carte.Configuration())) {
    RefuseLePort(carte, pilote.LInstrument());
  }
  GardeLesRéglages(carte, pilote.LInstrument().Settings());
}

void Rafraîchit(Carte& carte) {
  PiloteCBR& pilote = Pilote_(carte);
  TransmetLaCommande(carte, pilote);
  pilote.LInstrument().Refresh();
  Publie<CBR_UTEST_CLASS>(carte, pilote.LInstrument(), kVoies);
}

}  // namespace

const OpérationsCarte kTesteurCBR{.démarre = &Démarre, .rafraîchit = &Rafraîchit};

}  // namespace zuma::instruments
