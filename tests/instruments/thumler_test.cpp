// The drive on USB: what it is sent, what it answers, and the end of the program.
#include "instruments/thumler.h"

#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "sim/horloge_virtuelle.h"
#include "sim/thumler_simule.h"

namespace zuma {
namespace {

using essai::Texte;

class Fin : public FinDuProgramme {
 public:
  void ArrêteLeProgramme(std::string_view raison) override { raisons.emplace_back(raison); }
  std::vector<std::string> raisons;
};

class UnThumler : public testing::Test, public essai::Banc {
 public:
  UnThumler() {
    plateforme.ftdi = &usb;
    plateforme.fin = &fin;
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
    consigne = Ajoute("1", "Sortie Analogique", {0});
    mesures = Ajoute("2", "Entrée Analogique", {0, 1});
    essai::LitCarte(carte, "Thumler", "");
  }
  FonctionRef Ajoute(const char* clé, const char* type, const std::vector<std::int32_t>& numéros) {
    return essai::AjouteBloc(carte, clé,
                             {{"Type de Fonction", Texte(type)},
                              {"Nom de la Fonction", Texte("Bloc")},
                              {"Driver", Texte("")}},
                             numéros, horloge, registre);
  }
  static Canal& Le(const FonctionRef& bloc, std::int32_t numéro) {
    return *bloc->Canals()->Item(essai::CléDuCanal(numéro));
  }
  // What a pass sends.
  std::vector<std::string> Passe() {
    usb.commandes.clear();
    carte.MetàJour();
    return usb.commandes;
  }

  using Commandes_ = std::vector<std::string>;
  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(10);
  sim::ThumlerSimulé usb;
  Fin fin;
  Carte carte{plateforme};
  FonctionRef consigne, mesures;
};

TEST_F(UnThumler, EnvoieCeQuiChangeEtLitLesMesures) {
  carte.Initialise();
  const std::int32_t poignée = carte.Adresse();
  carte.Initialise();
  EXPECT_EQ(carte.Adresse(), poignée) << "the same device, and not one numbered like its handle";
  EXPECT_EQ(usb.vitesseLigne, 1953125);
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  Le(consigne, 0).ValeurCanal(42.9);
  usb.charge = 12.5;
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$V042", "$R", "$A"}));
  EXPECT_EQ(Le(mesures, 0).ValeurCanal(), 42);
  EXPECT_EQ(Le(mesures, 1).ValeurCanal(), 12.5);
  Le(consigne, 0).ValeurCanal(42.1);
  EXPECT_EQ(Passe(), (Commandes_{"$A"})) << "the integer part did not change";
  Le(consigne, 0).ValeurCanal(0);
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_FALSE(usb.EnMarche());
  Le(consigne, 0).ValeurCanal(42);
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$V042", "$R", "$A"})) << "runs again after a halt";
  EXPECT_TRUE(registre->entrées.empty());
}

// A stop leaves until an answer behind it says that the drive is at rest.
TEST_F(UnThumler, DoitUnArrêtJusquAuRepos) {
  carte.Initialise();
  Canal& canal = Le(consigne, 0);
  const auto tourne = [&] {
    canal.ValeurCanal(42);
    (void)Passe();
    EXPECT_TRUE(usb.EnMarche() && canal.Atteint());
  };
  const auto attend = [&](double secondes) { horloge->Avance(secondes * 1e6); };

  tourne();
  usb.muet = true;
  canal.ValeurCanal(0);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"})) << "as long as nothing answers";
    EXPECT_FALSE(canal.Atteint());
  }
  usb.muet = false;
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_TRUE(canal.Atteint());
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));

  tourne();
  canal.ValeurCanal(0);
  usb.réponseForcée = "A 00042;0000.00\n";  // runs down, or lost the "H"
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  EXPECT_FALSE(canal.Atteint());
  attend(1);
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  usb.réponseForcée.clear();
  (void)Passe();
  attend(1);
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  EXPECT_TRUE(canal.Atteint());

  canal.ValeurCanal(42);
  usb.muet = true;
  (void)Passe();
  EXPECT_FALSE(canal.Atteint());
  EXPECT_EQ(Passe(), (Commandes_{"$A"})) << "a set point is not repeated: its \"H\" would halt it";
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnThumler, ArrêteCeQuiTourneSousUneConsigneDeZéro) {
  std::int32_t tenue = 0;
  (void)usb.FT_Open(0, tenue);
  for (const char* commande : {"$V042", "$R"}) (void)usb.FT_Write(tenue, commande);
  carte.Initialise();
  EXPECT_EQ(Passe(), (Commandes_{"$A"}));
  EXPECT_FALSE(Le(consigne, 0).Atteint());
  EXPECT_TRUE(registre->Contient("trouvé en marche"));
  EXPECT_EQ(Passe(), (Commandes_{"$H", "$A"}));
  EXPECT_FALSE(usb.EnMarche());
  EXPECT_TRUE(Le(consigne, 0).Atteint());
  EXPECT_EQ(registre->entrées.size(), 1U);
  // A device without a speed among its measures: the answer alone confirms.
  plateforme.réglages.vitesseThumler = -1;
  usb.réponseForcée = "A 00042;0000.00\n";
  Le(consigne, 0).ValeurCanal(1);
  (void)Passe();
  Le(consigne, 0).ValeurCanal(0);
  (void)Passe();
  EXPECT_TRUE(Le(consigne, 0).Atteint());
}

TEST_F(UnThumler, GardeSesMesuresDansLeSilence) {
  carte.Initialise();
  usb.charge = 3;
  (void)Passe();
  usb.muet = true;
  const double départ = horloge->Maintenant();
  (void)Passe();
  EXPECT_EQ(Le(mesures, 1).ValeurCanal(), 3);
  EXPECT_LT(horloge->Maintenant() - départ, 55'000);
  EXPECT_TRUE(fin.raisons.empty());
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
