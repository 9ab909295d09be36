// The drive on USB: what it is sent, what it answers, and the end of the program.
#include "instruments/thumler.h"

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
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
  std::string Passe() {
    usb.commandes.clear();
    carte.MetàJour();
    std::string envoyées;
    for (const std::string& commande : usb.commandes) envoyées += commande;
    return envoyées;
  }
  double Charge() { return Le(mesures, 1).ValeurCanal(); }

  sim::ThumlerSimulé usb;
  Fin fin;
  Canal& consigne = Le(Ajoute("Sortie Analogique", {0}), 0);
  FonctionRef mesures = Ajoute("Entrée Analogique", {0, 1});
};

// A stop leaves until an answer behind it says that the drive is at rest. A set point is sent once:
// the halt before it would stop what turns.
TEST_F(UnThumler, EnvoieCeQuiChangeEtDoitUnArrêtJusquAuRepos) {
  carte.Initialise();
  const std::int32_t poignée = carte.Adresse();
  carte.Initialise();
  EXPECT_EQ(carte.Adresse(), poignée) << "the same device, and not one numbered like its handle";
  EXPECT_EQ(usb.vitesseLigne, 1953125);
  EXPECT_EQ(Passe(), "$A");
  constexpr const char* kTourne = "A 00042;0000.00\n";  // runs down, or lost the halt
  int rang = 0;
  for (const auto& [valeur, muet, réponse, attente, envoyées, atteinte] :
       essai::Cas<double, bool, const char*, int, const char*, bool>{
           {42.9, false, "", 0, "$H$V042$R$A", true},
           {42.1, false, "", 0, "$A", true},  // the integer part did not change
           {0, false, "", 0, "$H$A", true},
           {42, false, "", 0, "$H$V042$R$A", true},
           {0, true, "", 0, "$H$A", false},
           {0, true, "", 0, "$H$A", false},  // as long as nothing answers
           {0, false, "", 0, "$H$A", true},
           {0, false, "", 0, "$A", true},
           {42, false, "", 0, "$H$V042$R$A", true},
           {0, false, kTourne, 0, "$H$A", false},
           {0, false, kTourne, 0, "$A", false},
           {0, false, kTourne, 1, "$H$A", false},  // a second later
           {0, false, "", 0, "$A", true},
           {0, false, "", 1, "$A", true},
           {42, true, "", 0, "$H$V042$R$A", false},
           {42, true, "", 0, "$A", false}}) {
    SCOPED_TRACE(++rang);
    consigne.ValeurCanal(valeur);
    usb.muet = muet;
    usb.réponseForcée = réponse;
    horloge->Avance(attente * 1e6);
    EXPECT_EQ(Passe(), envoyées);
    EXPECT_EQ(consigne.Atteint(), atteinte);
    EXPECT_EQ(usb.EnMarche(), valeur != 0);
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnThumler, LitSesMesuresEtLesGardeDansLeSilence) {
  carte.Initialise();
  consigne.ValeurCanal(42.9);
  usb.charge = 12.5;
  (void)Passe();
  EXPECT_EQ(Le(mesures, 0).ValeurCanal(), 42);
  EXPECT_EQ(Charge(), 12.5);
  usb.muet = true;
  usb.charge = 3;
  const double départ = horloge->Maintenant();
  (void)Passe();
  EXPECT_EQ(Charge(), 12.5);
  EXPECT_LT(horloge->Maintenant() - départ, 55'000);
  EXPECT_TRUE(fin.raisons.empty());
}

TEST_F(UnThumler, ArrêteCeQuiTourneSousUneConsigneDeZéro) {
  usb.MetEnMarche();
  carte.Initialise();
  EXPECT_EQ(Passe(), "$A");
  EXPECT_FALSE(consigne.Atteint());
  EXPECT_TRUE(registre->Contient("trouvé en marche"));
  EXPECT_EQ(Passe(), "$H$A");
  EXPECT_FALSE(usb.EnMarche());
  EXPECT_TRUE(consigne.Atteint());
  EXPECT_EQ(registre->entrées.size(), 1U);
  // A device without a speed among its measures: the answer alone confirms.
  plateforme.réglages.vitesseThumler = -1;
  usb.réponseForcée = "A 00042;0000.00\n";
  for (const double valeur : {1, 0}) {
    consigne.ValeurCanal(valeur);
    (void)Passe();
  }
  EXPECT_TRUE(consigne.Atteint());
}

TEST_F(UnThumler, ArrêteLeProgrammeSurUneLiaisonPerdueOuUneRéponseFausse) {
  usb.branché = false;
  carte.Initialise();
  EXPECT_EQ(fin.raisons.size(), 1U);
  usb.branché = true;
  carte.Initialise();
  // What the next answer brings is dropped; the end of an earlier one is no answer.
  const std::tuple<const char*, std::size_t> cas[] = {
      {"B 1;2\n", 1}, {"A 12\n", 1}, {"A 1;2;3\n", 1}, {"A 00001;2A 3;4\n", 0}, {"\nA 3;4\n", 0}};
  for (const auto& [réponse, raisons] : cas) {
    fin.raisons.clear();
    usb.réponseForcée = réponse;
    (void)Passe();
    EXPECT_EQ(fin.raisons.size(), raisons) << réponse;
  }
  EXPECT_EQ(Charge(), 2);
}

}  // namespace
}  // namespace zuma
