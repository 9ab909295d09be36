// The drive on USB: what it is sent, what it answers, and the end of the program.
#include "instruments/thumler.h"

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "sim/thumler_simule.h"

namespace zuma {
namespace {

class Fin : public FinDuProgramme {
 public:
  void ArrêteLeProgramme(std::string_view raison) override { raisons.emplace_back(raison); }
  std::vector<std::string> raisons;
};

class UnThumler : public testing::Test, public essai::BancInstrument {
 public:
  UnThumler() {
    plateforme.ftdi = &usb;
    plateforme.fin = &fin;
    essai::LitCarte(carte, "Thumler", "");
  }
  ~UnThumler() override { chassis.Cartes({}); }
  // What a pass sends.
  std::vector<std::string> Passe() {
    usb.commandes.clear();
    carte.MetàJour();
    return usb.commandes;
  }

  using Commandes_ = std::vector<std::string>;
  sim::ThumlerSimulé usb;
  Fin fin;
  Canal& consigne = Le(Ajoute("Sortie Analogique", {0}), 0);
  FonctionRef mesures = Ajoute("Entrée Analogique", {0, 1});
};

TEST_F(UnThumler, EnvoieCeQuiChangeEtLitLesMesures) {
  carte.Initialise();
  const std::int32_t poignée = carte.Adresse();
  carte.Initialise();
  EXPECT_EQ(carte.Adresse(), poignée) << "the same device, and not one numbered like its handle";
  EXPECT_EQ(usb.vitesseLigne, 1953125);
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  consigne.ValeurCanal(42.9);
  usb.charge = 12.5;
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$V042", "$R", "$A"}));
  EXPECT_EQ(Le(mesures, 0).ValeurCanal(), 42);
  EXPECT_EQ(Le(mesures, 1).ValeurCanal(), 12.5);
  consigne.ValeurCanal(42.1);
  EXPECT_EQ(Passe(), (Commandes_{"$A"})) << "the integer part did not change";
  consigne.ValeurCanal(0);
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_FALSE(usb.EnMarche());
  consigne.ValeurCanal(42);
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$V042", "$R", "$A"})) << "runs again after a halt";
  usb.muet = true;
  const double départ = horloge->Maintenant();
  usb.charge = 3;
  (void)Passe();
  EXPECT_EQ(Le(mesures, 1).ValeurCanal(), 12.5) << "what silence leaves";
  EXPECT_LT(horloge->Maintenant() - départ, 55'000);
  EXPECT_TRUE(fin.raisons.empty());
  EXPECT_TRUE(registre->entrées.empty());
}

// A stop leaves until an answer behind it says that the drive is at rest.
TEST_F(UnThumler, DoitUnArrêtJusquAuRepos) {
  carte.Initialise();
  const auto tourne = [&] {
    consigne.ValeurCanal(42);
    (void)Passe();
    EXPECT_TRUE(usb.EnMarche() && consigne.Atteint());
  };
  const auto attend = [&](double secondes) { horloge->Avance(secondes * 1e6); };

  tourne();
  usb.muet = true;
  consigne.ValeurCanal(0);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"})) << "as long as nothing answers";
    EXPECT_FALSE(consigne.Atteint());
  }
  usb.muet = false;
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_TRUE(consigne.Atteint());
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));

  tourne();
  consigne.ValeurCanal(0);
  usb.réponseForcée = "A 00042;0000.00\n";  // runs down, or lost the "H"
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  EXPECT_FALSE(consigne.Atteint());
  attend(1);
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  usb.réponseForcée.clear();
  (void)Passe();
  attend(1);
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  EXPECT_TRUE(consigne.Atteint());

  consigne.ValeurCanal(42);
  usb.muet = true;
  (void)Passe();
  EXPECT_FALSE(consigne.Atteint());
  EXPECT_EQ(Passe(), (Commandes_{"$A"})) << "a set point is not repeated: its \"H\" would halt it";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnThumler, ArrêteCeQuiTourneSousUneConsigneDeZéro) {
  std::int32_t tenue = 0;
  (void)usb.FT_Open(0, tenue);
  for (const char* commande : {"$V042", "$R"}) (void)usb.FT_Write(tenue, commande);
  carte.Initialise();
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  EXPECT_FALSE(consigne.Atteint());
  EXPECT_TRUE(registre->Contient("trouvé en marche"));
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_FALSE(usb.EnMarche());
  EXPECT_TRUE(consigne.Atteint());
  EXPECT_EQ(registre->entrées.size(), 1U);
  // A device without a speed among its measures: the answer alone confirms.
  plateforme.réglages.vitesseThumler = -1;
  usb.réponseForcée = "A 00042;0000.00\n";
  consigne.ValeurCanal(1);
  (void)Passe();
  consigne.ValeurCanal(0);
  (void)Passe();
  EXPECT_TRUE(consigne.Atteint());
}

TEST_F(UnThumler, ArrêteLeProgrammeSurUneLiaisonPerdueOuUneRéponseFausse) {
  usb.branché = false;
  carte.Initialise();
  EXPECT_EQ(fin.raisons.size(), 1U);
  usb.branché = true;
  carte.Initialise();
  for (const char* fausse : {"B 1;2\n", "A 12\n", "A 1;2;3\n"}) {
    fin.raisons.clear();
    usb.réponseForcée = fausse;
    (void)Passe();
    ASSERT_EQ(fin.raisons.size(), 1U) << fausse;
  }
  // What the next answer brings is dropped; the end of an earlier one is no answer.
  fin.raisons.clear();
  for (const char* coupée : {"A 00001;2A 3;4\n", "\nA 3;4\n"}) {
    usb.réponseForcée = coupée;
    (void)Passe();
    EXPECT_TRUE(fin.raisons.empty()) << coupée;
    EXPECT_EQ(Le(mesures, 1).ValeurCanal(), 2) << coupée;
  }
}

}  // namespace
}  // namespace zuma
