// The watchdog against its simulated board, and as a pulse.
#include "logic/watchdog.h"

#include <limits>

#include <gtest/gtest.h>

#include "boards/wdt_01.h"
#include "outils/allocations.h"
#include "outils/banc_logique.h"
#include "sim/carte_wdt01.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::Nombre;
using essai::Texte;
using Textes = std::deque<std::string>;

constexpr std::uint16_t kBase = 0x220;

// Message box behind which somebody repairs the board.
class Dépanneur : public BoîteDeMessage {
 public:
  void Montre(std::string_view texte, const ObjetConcerné&) override {
    EXPECT_EQ(texte, "TimeOut Watch dog");
    if (++messages == 3) carte->Panne(false);
  }
  sim::CarteWDT01* carte = nullptr;
  int messages = 0;
};

class UnWatchdog : public testing::Test, protected essai::BancLogique {
 protected:
  UnWatchdog() {
    bus.Attache(kBase, sim::CarteWDT01::kPorts, carte);
    dépanneur.carte = &carte;
  }
  Ligne LigneDeWatchdog(const Valeur& temps = Texte("0,5")) {
    return {{"Index", Nombre(1)},
            {"Nom du Watchdog", Texte("Chien")},
            {"Adresse", Texte("220")},
            {"Temps en seconde", temps},
            {"Pulse", Valeur(Nul{})}};
  }
  Ref<Watchdog> Fait(const Ligne& ligne) {
    auto watchdog = Crée<Watchdog>(plateforme);
    watchdog->ChargeErreur(registre);
    watchdog->TimerExact(horloge);
    watchdog->ParamètresDepuisBD(essai::UneLigne(ligne));
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
  auto chien = Fait(LigneDeWatchdog());
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.5", "E"}));
  chien->Enabled(true);
  EXPECT_EQ(Reçues(), (Textes{"S"}));
  EXPECT_TRUE(carte.EstArmée());
  chien->Enabled(false);
  EXPECT_EQ(Reçues(), (Textes{"E"}));
  chien->Temps(1.5);
  EXPECT_EQ(Reçues(), (Textes{"E", "T=1.5"})) << "with a decimal point";
  chien->Temps(0);
  EXPECT_EQ(Reçues(), Textes{});
  chien->Temps(0.25);
  Reçues();

  chien->DéclencheAU();
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.01", "S"}));
  chien->Enabled(true);
  chien->Enabled(false);
  chien->Enabled(true);
  EXPECT_EQ(Reçues(), Textes{}) << "latched: the flag alone";
  EXPECT_TRUE(chien->Enabled());
  chien->Réarme();
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.25", "E"}));
  EXPECT_FALSE(carte.EstArmée()) << "stopped until it is enabled again";
  chien->Enabled(true);
  EXPECT_EQ(Reçues(), (Textes{"S"}));

  chien = nullptr;
  EXPECT_EQ(Reçues(), (Textes{"E"})) << "released, it stops the board";
  EXPECT_EQ(carte.OctetsPerdus(), 0U);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnWatchdog, TientLaChaîneTantQuIlEstRafraîchi) {
  const auto chien = Fait(LigneDeWatchdog());
  Passes(*chien, 10);
  EXPECT_EQ(Reçues(), (Textes{"E", "T=0.5", "E"})) << "not enabled: no refresh";
  chien->Enabled(true);
  const auto avant = essai::Allocations();
  for (int i = 0; i < 4; ++i) chien->MetàJour();
  EXPECT_EQ(essai::Allocations(), avant) << "a pass allocates nothing";
  Passes(*chien, 1000);
  EXPECT_TRUE(carte.ContactFermé());
  EXPECT_GE(Reçues().size(), 500U);
  horloge->Avance(0.49e6);
  EXPECT_TRUE(carte.ContactFermé());
  horloge->Avance(0.02e6);
  EXPECT_FALSE(carte.ContactFermé()) << "the host froze";
  Passes(*chien, 10);
  EXPECT_FALSE(carte.ContactFermé()) << "it does not come back by itself";
  chien->Enabled(false);
  chien->Enabled(true);
  EXPECT_TRUE(carte.ContactFermé());
}

TEST_F(UnWatchdog, FaitTomberLaChaîneAprèsUnArrêtSiLeRafraîchissementEstLent) {
  const auto chien = Fait(LigneDeWatchdog());
  chien->Enabled(true);
  Passes(*chien, 10);
  chien->DéclencheAU();
  EXPECT_TRUE(carte.ContactFermé());
  Passes(*chien, 2, 20'000);
  EXPECT_FALSE(carte.ContactFermé());
}

TEST_F(UnWatchdog, NAttendJamaisDansUnePasse) {
  const auto chien = Fait(LigneDeWatchdog());
  chien->Enabled(true);
  Ecritures();
  carte.DuréeOctet(5000);
  Passes(*chien, 10);  // one pass in three finds the board ready
  const std::size_t octets = Ecritures();
  EXPECT_EQ(octets, 4U);
  carte.Panne(true);
  const double avant = horloge->Maintenant();
  chien->MetàJour();
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_LT(horloge->Maintenant() - avant, 10);
  carte.Panne(false);
  EXPECT_EQ(carte.OctetsPerdus(), 0U);
}

TEST_F(UnWatchdog, AppelleAuSecoursUneCarteQuiNeRépondPas) {
  plateforme.messages = &dépanneur;
  const auto chien = Fait(LigneDeWatchdog());
  EXPECT_EQ(dépanneur.messages, 0);
  carte.Panne(true);
  Reçues();
  const double avant = horloge->Maintenant();
  chien->Enabled(true);
  EXPECT_EQ(dépanneur.messages, 3) << "one for each poll after the deadline";
  EXPECT_GT(horloge->Maintenant() - avant, 1e6);
  EXPECT_EQ(Reçues(), (Textes{"S"})) << "nothing was lost";
  EXPECT_TRUE(registre->entrées.empty());

  const wdt_01::Liaison liaison{bus, *horloge, *chien, kBase};
  EXPECT_TRUE(wdt_01::WDT_EcritOctet(liaison, 13));
  carte.Panne(true);
  dépanneur.messages = 0;
  EXPECT_FALSE(wdt_01::WDT_EcritOctet(liaison, 13));
}

TEST_F(UnWatchdog, NeToucheAucunPortSansCarte) {
  const auto chien = Fait(Avec(LigneDeWatchdog(), "Adresse", Texte("0")));
  Ecritures();
  chien->Enabled(true);
  chien->Temps(2);
  chien->DéclencheAU();
  chien->Réarme();
  Passes(*chien, 4);
  chien->Enabled(false);
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_EQ(chien->Temps(), 2);

  // Without a time the board stays stopped, and the frame never refreshes it.
  chassis.Watchdog(Fait(LigneDeWatchdog(Nombre(0))));
  chassis.Watchdog()->Enabled(true);
  EXPECT_EQ(Reçues(), (Textes{"E"}));
  Ecritures();
  for (int i = 0; i < 5; ++i) {
    timer->heure += 1e6;
    chassis.MetàJour();
  }
  EXPECT_EQ(Ecritures(), 0U);
  EXPECT_FALSE(carte.EstArmée());
  chassis.Watchdog()->Temps(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(registre->Contient("Erreur N°5 "));
  EXPECT_EQ(Ecritures(), 0U);
  chassis.Watchdog({});
}

TEST_F(UnWatchdog, EnPulseBatAuPlusToutesLes20Millisecondes) {
  const auto chien = Fait(Avec(LigneDeWatchdog(), "Pulse", Nombre(12)));
  EXPECT_EQ(Reçues(), Textes{}) << "the pulse form leaves the board alone";
  const CanalRef pulse = CanalDe(12);
  horloge->Avance(1e6);
  chien->MetàJour();
  double dernier = horloge->Maintenant();
  double niveau = pulse->ValeurCanal();
  EXPECT_EQ(niveau, -1);
  int fronts = 0;
  for (int i = 0; i < 1000; ++i) {
    if (i == 300) chien->Enabled(true);
    if (i == 500) chien->DéclencheAU();
    Passes(*chien, 1, 1000);
    if (pulse->ValeurCanal() == niveau) continue;
    niveau = pulse->ValeurCanal();
    EXPECT_GE(horloge->Maintenant() - dernier, 20'000);
    EXPECT_LT(horloge->Maintenant() - dernier, 21'100);
    dernier = horloge->Maintenant();
    ++fronts;
  }
  EXPECT_GT(fronts, 45) << "neither enabling nor a stop keeps it from beating";
  EXPECT_EQ(Reçues(), Textes{});
}

TEST_F(UnWatchdog, DitUneLigneQuIlNePeutPasLire) {
  EXPECT_EQ(Fait(Avec(LigneDeWatchdog(), "Index", Valeur(Nul{})))->Key(), "0");
  const auto chien = Fait(Avec(LigneDeWatchdog(), "Adresse", Texte("port")));
  EXPECT_EQ(chien->Adresse(), 0);
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
  (void)Fait(Avec(LigneDeWatchdog(), "Pulse", Nombre(77)));
  EXPECT_EQ(messages.textes,
            std::vector<std::string>{"Attention : Le watchdog 'Chien' utilise un canal d'index "
                                     "'77' qui n'a pas été trouvé."});
}

TEST(LaLigneDuTemps, EstEnSecondesAvecUnPointEtSansSigne) {
  const struct {
    float secondes;
    const char* ligne;
  } cas[] = {{0.01F, "T=0.01"}, {1.5F, "T=1.5"},      {0.1F, "T=0.1"},    {-2.0F, "T=2"},
             {30.0F, "T=30"},   {1e-5F, "T=0.00001"}, {1e6F, "T=1000000"}};
  for (const auto& c : cas) EXPECT_EQ(wdt_01::LigneDuTemps(c.secondes), c.ligne);
}

}  // namespace
}  // namespace zuma
