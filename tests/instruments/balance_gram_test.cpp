// The Gram balance: its records, and its board when the cable comes and goes.
#include "instruments/balance_gram.h"

#include <gtest/gtest.h>

#include "instruments/trames_gram.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/balance_gram_simulee.h"

namespace zuma {
namespace {

TEST(LesEnregistrementsGram, SePrennentEtSeReconnaissentParLeurTerminateur) {
  for (const auto& [quoi, tampon, pris, reste] : essai::Cas<const char*, Octets, bool, Octets>{
           {"exactly twelve characters", "+  12.34 g\r\n", false, "+  12.34 g\r\n"},
           {"one more before", "x+  12.34 g\r\n", true, "+  12.34 g"},
           {"several, the next begun", "+  12.34 g\r\n-   1.00kg\r\n- 2", true, "-   1.00kg- 2"},
           {"no terminator", "+  12.34 g\r+  12.34 g\n", false, "+  12.34 g\r+  12.34 g\n"},
           {"terminator too early", "12.34 g\r\n-  1.00", false, "12.34 g\r\n-  1.00"},
           {"no end", Octets(99, 'x'), false, Octets(64, 'x')}}) {
    Octets texte = tampon;
    EXPECT_EQ(trames_gram::ExtraitEnregistrement(texte), pris) << quoi;
    EXPECT_EQ(texte, reste) << quoi;
  }
  // Recognised by their terminator ten characters behind the sign.
  const std::pair<const char*, bool> cas[] = {
      {"\r\n-  12.34 g\r\n", true}, {"-1\r\n+  12.34 g\r\n", true}, {"+ 12.34 g\r\n", false},
      {"+   12.34 g\r\n", false},   {"-  12.34 g\r\n+", false},     {"   12.34 g\r\n", false}};
  for (const auto& [texte, reconnu] : cas) {
    EXPECT_EQ(trames_gram::ContientUnEnregistrement(texte), reconnu) << texte;
  }
}

class UneCarteGram : public testing::Test, public essai::BancInstrument {
 public:
  UneCarteGram() { balance->poids = -12.34; }
  // Seconds until the connected channel reads `niveau`; 30 for never.
  double Attend(double niveau) {
    double secondes = 0;
    for (; secondes < 30 && connectée.ValeurCanal() != niveau; secondes += 0.005) Passe(0.005);
    return secondes;
  }
  Ref<sim::BalanceGramSimulée> balance = Crée<sim::BalanceGramSimulée>(*horloge);
  sim::Pannes& pannes = liaisons.Attache(4, balance).pannes;
  Canal& valeur = Le(Ajoute("Entrée Analogique", {0}), 0);
  Canal& connectée = Le(Ajoute("Entrée Logique", {0}), 0);
};

TEST_F(UneCarteGram, RetrouveLaBalanceDébranchéePuisRebranchée) {
  Démarre("Balance GRAM", "4,9600,N,8,1");
  Passe(5);
  balance->trameForcée = "+ ------ g\r\n";
  Passe(2);
  EXPECT_EQ(valeur.ValeurCanal(), -12.34);
  EXPECT_EQ(connectée.ValeurCanal(), -1) << "it still speaks";
  pannes.débranchée = true;
  EXPECT_NEAR(Attend(0), 0.5, 0.11);
  Passe(0.1);  // looked for at once, in vain
  EXPECT_EQ(valeur.ValeurCanal(), -12.34);
  balance->trameForcée = "+      6 g\r\n";
  pannes = {.muette = true};
  EXPECT_NEAR(Attend(-1), 4.9, 0.05);
  Passe(0.4);
  EXPECT_EQ(connectée.ValeurCanal(), -1) << "it has the time to speak";
  pannes.muette = false;
  Passe(1);
  EXPECT_EQ(connectée.ValeurCanal(), -1);
  EXPECT_EQ(valeur.ValeurCanal(), 6);
  EXPECT_TRUE(registre->entrées.empty() && messages.textes.empty());
  pannes.débranchée = true;
  carte.Initialise();
  carte.MetàJour();
  EXPECT_EQ(connectée.ValeurCanal(), 0) << "a start begins with a balance as new";
}

// The first half of a record that was on its way when the cable was pulled, and the second half of
// the one that was on its way when it was put back.
TEST_F(UneCarteGram, NeJointPasDeuxMoitiés) {
  Démarre("Balance GRAM", "4,9600,N,8,1");
  Passe(1);
  balance->trameForcée = "+  99";
  Passe(0.15);
  pannes.débranchée = true;
  balance->trameForcée = "  ";
  Passe(3);
  pannes.débranchée = false;
  balance->trameForcée = "1.25 g\r\n";
  Passe(5);
  EXPECT_EQ(valeur.ValeurCanal(), -12.34);
  balance->trameForcée.clear();
  balance->poids = 3;
  Passe(5);
  EXPECT_EQ(valeur.ValeurCanal(), 3);
}

TEST_F(UneCarteGram, DitUneBalanceIntrouvableEtLaChercheEncore) {
  pannes.débranchée = true;
  for (Fenêtres* dHôte : {static_cast<Fenêtres*>(nullptr), static_cast<Fenêtres*>(&fenêtres)}) {
    plateforme.fenêtres = dHôte;  // its operator closes the form
    Démarre("Balance GRAM", "4,9600,N,8,1");
    EXPECT_EQ(Réglages(), "4,9600,N,8,1") << "an empty choice is not written";
  }
  EXPECT_EQ(messages.textes, std::vector<std::string>(2, "GRAM balance not found."));
  pannes.débranchée = false;
  EXPECT_NEAR(Attend(-1), 5, 0.05);
  EXPECT_EQ(fenêtres.montrées, 1) << "looked for without asking again";
}

TEST_F(UneCarteGram, GardeLePortChoisiEtLeCherche) {
  plateforme.fenêtres = &fenêtres;
  fenêtres.opérateur = [](ChoixDuPort& feuille) { feuille.BtnAutoScan(); };
  Démarre("Balance GRAM", "9,9600,N,8,1");
  EXPECT_EQ(Réglages(), "4,1200,N,8,1");
  Passe(7);
  pannes.débranchée = true;
  (void)Attend(0);
  pannes.débranchée = false;
  EXPECT_LT(Attend(-1), 6) << "the port that was chosen, not that of the first settings";
}

}  // namespace
}  // namespace zuma
