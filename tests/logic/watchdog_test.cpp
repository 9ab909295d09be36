// The watchdog against its simulated board, and as a pulse.
#include "logic/watchdog.h"

#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "logic/wdt_01.h"
#include "outils/allocations.h"
#include "outils/banc_logique.h"
#include "outils/cas.h"
#include "platform/attente.h"
#include "sim/carte_wdt01.h"

namespace zuma::essai {
namespace {

using Textes = std::deque<std::string>;

constexpr std::uint16_t kBase = 0x220;

// Message box behind which somebody repairs the board.
class Dépanneur : public Messages {
 public:
  void Montre(std::string_view texte, const ObjetConcerné& objet) override {
    Messages::Montre(texte, objet);
    if (textes.size() == 3) carte->Panne(false);
  }
  sim::CarteWDT01* carte = nullptr;
};

class UnWatchdog : public testing::Test, protected BancLogique {
 protected:
  UnWatchdog() {
    bus.Attache(kBase, sim::CarteWDT01::kPorts, carte);
    dépanneur.carte = &carte;
  }
  Ref<Watchdog> Fait(const Ligne& champs = {}) {
    auto watchdog = Lu<Watchdog>(Avec({{"Index", 1},
                                       {"Nom du Watchdog", "Chien"},
                                       {"Adresse", "220"},
                                       {"Temps en seconde", "0,5"},
                                       {"Pulse", Nul{}}},
                                      champs));
    watchdog->TimerExact(horloge);
    Lie(*watchdog);
    watchdog->Initialise();
    return watchdog;
  }
  // Lines received since the last call.
  Textes Reçues() {
    Textes reçues = carte.Lignes();
    carte.OublieLesLignes();
    return reçues;
  }
  void Passes(Watchdog& watchdog, int nombre, double période = 2000) {
    for (int i = 0; i < nombre; ++i) {
      horloge->Avance(période);
      watchdog.MetàJour();
    }
  }
  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>();
  sim::CarteWDT01 carte{*horloge};
  Dépanneur dépanneur;
};

TEST_F(UnWatchdog, ParleÀSaCarteÀChaqueEvènement) {
  auto chien = Fait();
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.5", "E"}));
  for (const auto& [agit, attendues] : Cas<std::function<void()>, Textes>{
           {[&] { chien->Enabled(true); }, {"S"}},
           {[&] { chien->Enabled(false); }, {"E"}},
           {[&] { chien->Temps(0); }, {}},  // a board without a time would trip at once
           {[&] { chien->Temps(0.25); }, {"E", "T=0.25"}},
           {[&] { chien->DéclencheAU(); }, {"E", "T=0.01", "S"}},
           {[&] { chien->Enabled(false); }, {}},  // latched: the flag alone
           {[&] { chien->Enabled(true); }, {}},
           {[&] { chien->Réarme(); }, {"E", "T=0.25", "E"}},  // stopped until it is enabled again
           {[&] { chien->Enabled(true); }, {"S"}},
           {[&] { chien = nullptr; }, {"E"}}}) {  // released, it stops the board
    agit();
    EXPECT_EQ(Reçues(), attendues);
  }
  EXPECT_EQ(carte.OctetsPerdus(), 0U);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnWatchdog, TientLaChaîneSansJamaisAttendreDansUnePasse) {
  const auto chien = Fait();
  Passes(*chien, 10);
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.5", "E"})) << "not enabled: no refresh";
  chien->Enabled(true);
  const auto avant = Allocations();
  for (int i = 0; i < 4; ++i) chien->MetàJour();
  EXPECT_EQ(Allocations(), avant) << "a pass allocates nothing";
  Passes(*chien, 1000);
  EXPECT_GE(Reçues().size(), 500U);
  horloge->Avance(0.49e6);
  EXPECT_TRUE(carte.ContactFermé());
  horloge->Avance(0.02e6);
  EXPECT_FALSE(carte.ContactFermé()) << "the host froze";
  Passes(*chien, 10);
  EXPECT_FALSE(carte.ContactFermé()) << "it does not come back by itself";
  chien->Enabled(true);
  Passes(*chien, 10);
  chien->DéclencheAU();
  EXPECT_TRUE(carte.ContactFermé());
  Passes(*chien, 2, 20'000);
  EXPECT_FALSE(carte.ContactFermé()) << "a stop drops it unless the refresh is fast";
  Ecritures();
  carte.DuréeOctet(5000);
  Passes(*chien, 10);  // one pass in three finds the board ready
  EXPECT_EQ(Ecritures(), 4U);
  carte.Panne(true);
  const double début = horloge->Maintenant();
  chien->MetàJour();
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_LT(horloge->Maintenant() - début, 10);
  carte.Panne(false);  // the release of the watchdog waits for its board
  EXPECT_EQ(carte.OctetsPerdus(), 0U);
}

TEST_F(UnWatchdog, AppelleAuSecoursUneCarteQuiNeRépondPas) {
  plateforme.messages = &dépanneur;
  const auto chien = Fait();
  carte.Panne(true);
  Reçues();
  const double avant = horloge->Maintenant();
  chien->Enabled(true);
  EXPECT_EQ(dépanneur.textes, std::vector<std::string>(3, "TimeOut Watch dog")) << "each poll";
  EXPECT_GT(horloge->Maintenant() - avant, 1e6);
  EXPECT_EQ(Reçues(), (Textes{"S"})) << "nothing was lost";
  EXPECT_TRUE(registre->entrées.empty());
}

// A box that gives the board up ends every wait for it, in a second and with an entry in the
// record.
TEST_F(UnWatchdog, AbandonneUneCarteAvecSaBoîte) {
  struct : Messages, AttenteLimitée {
    bool AttendEncore(std::string_view texte, const ObjetConcerné& objet, int fois) override {
      Montre(texte, objet);
      return fois < kPatience;
    }
  } boîte;
  plateforme.messages = &boîte;
  auto chien = Fait();
  carte.Panne(true);
  EXPECT_FALSE(chien->CartePrête());
  for (const auto& [geste, atteint] :
       Cas<std::function<void()>, bool>{{[&] { chien->Initialise(); }, true},
                                        {[&] { chien->Enabled(true); }, true},
                                        {[&] { chien->Temps(0.2); }, true},
                                        {[&] { chien->DéclencheAU(); }, false},
                                        {[&] { chien->Réarme(); }, true}}) {
    const double avant = horloge->Maintenant();
    geste();
    EXPECT_LT(horloge->Maintenant() - avant, 1.01e6);
    EXPECT_EQ(boîte.textes.size(), static_cast<std::size_t>(AttenteLimitée::kPatience));
    EXPECT_TRUE(Dit("TimeOut Watch dog : carte abandonnée"));
    EXPECT_EQ(chien->ArrêtAtteint(), atteint);
    boîte.textes.clear();
  }
  chien = nullptr;
  EXPECT_TRUE(registre->Contient("Terminate"));
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.5", "E"})) << "what it was given before it hung";
}

TEST_F(UnWatchdog, NeToucheAucunPortSansCarteNiSansTemps) {
  for (const auto& [colonne, valeur, envoyées] :
       Cas<const char*, Valeur, Textes>{{"Adresse", "0", {}}, {"Temps en seconde", 0, {"E"}}}) {
    const auto chien = Fait({{colonne, valeur}});
    chassis.Watchdog(chien);
    chien->Enabled(true);
    EXPECT_EQ(Reçues(), envoyées);
    Ecritures();
    for (int i = 0; i < 5; ++i) {
      timer->heure += 1e6;
      chassis.MetàJour();
    }
    chien->Temps(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(Dit("Erreur N°5 "));
    EXPECT_EQ(Ecritures(), 0U);
    chassis.Watchdog({});
  }
  const auto sansCarte = Fait({{"Adresse", "0"}});
  Ecritures();
  sansCarte->DéclencheAU();
  sansCarte->Réarme();
  EXPECT_EQ(Ecritures(), 0U);
}

TEST_F(UnWatchdog, EnPulseBatAuPlusToutesLes20Millisecondes) {
  const auto chien = Fait({{"Pulse", 12}});
  const CanalRef pulse = CanalDe(12);
  horloge->Avance(1e6);
  Ecritures();
  chien->MetàJour();
  EXPECT_EQ(pulse->ValeurCanal(), -1);
  EXPECT_GT(Ecritures(), 0U) << "on its board in the same pass";
  double dernier = horloge->Maintenant();
  int fronts = 0;
  for (int i = 0; i < 1000; ++i) {
    if (i == 300) chien->Enabled(true);
    if (i == 500) chien->DéclencheAU();
    const double niveau = pulse->ValeurCanal();
    Passes(*chien, 1, 1000);
    if (pulse->ValeurCanal() == niveau) continue;
    EXPECT_NEAR(horloge->Maintenant() - dernier, 20'550, 550);
    dernier = horloge->Maintenant();
    ++fronts;
  }
  EXPECT_GT(fronts, 45) << "neither enabling nor a stop keeps it from beating";
  EXPECT_EQ(Reçues(), Textes{}) << "it leaves the board alone";
}

TEST_F(UnWatchdog, DitUneLigneQuIlNePeutPasLire) {
  EXPECT_EQ(Fait({{"Index", Nul{}}})->Key(), "0");
  EXPECT_EQ(Fait({{"Adresse", "port"}})->Adresse(), 0);
  EXPECT_TRUE(Dit("Erreur N°13 "));
  (void)Fait({{"Pulse", 77}});
  EXPECT_EQ(messages.textes,
            std::vector<std::string>{"Attention : Le watchdog 'Chien' utilise un canal d'index "
                                     "'77' qui n'a pas été trouvé."});
  // A line of the time is in seconds with a point, and has no sign.
  for (const auto& [secondes, ligne] : Cas<float, const char*>{
           {0.01F, "T=0.01"}, {-2.0F, "T=2"}, {1e-5F, "T=0.00001"}, {1e6F, "T=1000000"}}) {
    EXPECT_EQ(wdt_01::LigneDuTemps(secondes), ligne);
  }
}

}  // namespace
}  // namespace zuma::essai
