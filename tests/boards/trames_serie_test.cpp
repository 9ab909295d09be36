// Serial frames as functions on bytes, then balances and gauges through blocks and channels.
#include "boards/trames_serie.h"

#include <gtest/gtest.h>

#include "boards/metro.h"
#include "outils/arbre.h"
#include "sim/balances_simulees.h"
#include "sim/liaisons_simulees.h"
#include "sim/metro_simule.h"

namespace zuma {
namespace {

using essai::Nombre;
using essai::Texte;
using namespace trames_serie;

// 12345 with its digits in any order: place in the top bits, digit in the low ones.
TEST(TramesSérie, LRPC) {
  const Octets trame{'\xA4', '\x05', '\x24', '\x43', '\x62', '\x81'};
  const Octets autre{'\xA8', '\x01', '\x20', '\x40', '\x60', '\x80'};
  const struct {
    const char* quoi;
    Octets texte;
    double valeur;  // 7: the kept one
  } cas[] = {
      {"in their order", trame, 12345},
      {"in any order", {"\x81\x62\xA8\x05\x24\x43", 6}, -12345},
      {"bit 4 is free", {"\xA4\x15\x34\x43\x62\x81", 6}, 12345},
      {"places 6 and 7", {"\xA4\xC9\xE9\x43\x62\x81", 6}, 7},
      {"no digit", {"\xA4\x05\x2A\x43\x62\x81", 6}, 7},
      {"the first frame counts", trame + autre, 12345},
      {"no whole frame", trame.substr(0, 5), 7},
      {"its last byte lost", trame.substr(0, 5) + autre, -1},
      {"two signs", {"\xA4\xA8\x05\x24\x43\x62\x81", 7}, -12345},
      {"one byte turned over", {"\xA4\x05\x04\x43\x62\x81", 6}, 7},
  };
  for (const auto& c : cas) EXPECT_EQ(DecortiqueBuffer_dbl(c.texte, 7), c.valeur) << c.quoi;
}

TEST(TramesSérie, DEXAL) {
  const struct {
    const char* texte;
    double valeur;  // 7: the kept one
  } cas[] = {
      {"\2S+012.34", 12.34},  {"\2S-012,34", -12.34},  {"\2S+999999", 999999},
      {"\2S-  1.50", -1.5},   {"\2S  -1.50", -1.5},    {"\2S+00012.", 12},
      {"+-+012.34", 12.34},   {"\2S+0x2.34", 7},       {"\2S+1.2.34", 7},
      {"\2S1234567", 7},      {"\2S+12 .34", 7},       {"\2S1-2.345", -12.345},
      {"\2S012.34-", -12.34}, {"\2S+12.34-", 7},       {"\2S+     ", 7},
      {"\2S+012.3", 7},       {"\2S+01.500\2S+", 1.5},
  };
  for (const auto& c : cas) {
    EXPECT_NEAR(DecortiqueBufferDEXAL_dbl(c.texte, 7), c.valeur, 1e-9) << c.texte;
  }
}

TEST(TramesSérie, JADEVER) {
  const struct {
    const char* texte;
    bool trouvée;
    double valeur;
    const char* reste;
  } cas[] = {
      {"N.W.:  12.345kg\r\nN.W", true, 12.345, "N.W"},
      {"G.W.: 1 kg\r\nN.W.:-  3 kg\r\n", true, -3, ""},
      {"N.W.:- -3 kg\r\n", true, 7, ""},
      {"G.W.: 1 kg\r\nN.W.: -3,5 kg\r\n", true, -3.5, ""},
      {"N.W.: 2.5 kg\r\nPCS: 10\r\n", true, 2.5, ""},
      {"N.W.: 2.5 kg\r\nLOT 17\r\n", true, 2.5, ""},
      {"N.W.: OL\r\n", true, 7, ""},
      {"N.W.:", false, 0, "N.W.:"},
      {"PCS: 10\r\nN", false, 0, "N"},
  };
  for (const auto& c : cas) {
    Octets texte = c.texte;
    double valeur = 0;
    EXPECT_EQ(DecortiqueJADEVER(texte, valeur, 7), c.trouvée) << c.texte;
    EXPECT_EQ(valeur, c.valeur) << c.texte;
    EXPECT_EQ(texte, c.reste) << c.texte;
  }
}

// A line of the single form; `code` and `champ` as they stand in it.
Octets LigneMETRO(char canal, const char* code, const char* champ) {
  return Octets(1, canal) + " " + code + " " + champ + " mm    \r\n";
}

TEST(TramesSérie, METRO) {
  const Octets une = LigneMETRO('1', "MW", "+0012.3456");
  const Octets deux = LigneMETRO('2', "MW", "-0000.5000");
  const struct {
    Octets texte;
    bool finie;
    std::optional<double> v1, v2;
    Octets reste;
    const char* pourquoi;
  } cas[] = {
      {une + "1 M", true, 12.3456, {}, "1 M", "the active channel, more behind"},
      {une, false, 12.3456, {}, "", "the last line gives its value, the frame may go on"},
      {deux + une + "x", true, 12.3456, -0.5, "x", "the walk goes past another channel"},
      {"rest\r\n" + une + "x", true, 12.3456, {}, "x", "a fragment is dropped"},
      {"rest\r\n", false, {}, {}, "", "nothing but a fragment"},
      {Octets(une, 0, 20), false, {}, {}, Octets(une, 0, 20), "no line is complete"},
      {LigneMETRO('1', "MW", "#         ") + deux, false, {}, -0.5, "", "# is no value"},
      {LigneMETRO('1', "MW", "#         ") + une + "x", true, 12.3456, {}, "x", "and skipped"},
      {LigneMETRO('1', "MW", "-   2.3456") + "x", true, -2.3456, {}, "x", "blanks behind the sign"},
      {LigneMETRO('1', "ER", "+0012.3456") + "x", false, {}, {}, "x", "no measure"},
      {LigneMETRO('?', "MW", "+0012.3456") + "x", false, {}, {}, "x", "no channel"},
  };
  for (const auto& c : cas) {
    Octets texte = c.texte;
    TableMETRO table;
    JaugesLues lues;
    EXPECT_EQ(Decortique_METRO(texte, 1, table, lues), c.finie) << c.pourquoi;
    EXPECT_EQ(table[1], c.v1) << c.pourquoi;
    EXPECT_EQ(table[2], c.v2) << c.pourquoi;
    EXPECT_EQ(texte, c.reste) << c.pourquoi;
  }
  Octets texte = une + "\r\n";
  TableMETRO table;
  JaugesLues lues;
  EXPECT_TRUE(Decortique_METRO(texte, 1, table, lues));
  texte = "3MW 000000000+0001.2500 mm \r\n";
  std::int32_t canal = 0;
  double valeur = 0;
  EXPECT_TRUE(Decortique_METRO_MUX_2_4_8(texte, canal, valeur));
  EXPECT_EQ(canal, 3);
  EXPECT_EQ(valeur, 1.25);
  texte = "3MW 000000000#          mm \r\n3MW 000000000+0001.25\r\n";
  EXPECT_FALSE(Decortique_METRO_MUX_2_4_8(texte, canal, valeur));
}

class UneLigneSérie : public testing::Test, public essai::Banc {
 public:
  UneLigneSérie() {
    plateforme.liaisons = &liaisons;
    carte.TimerExact(horloge);
    carte.ChargeErreur(registre);
  }
  FonctionRef Bloc(const char* driver, const std::vector<std::int32_t>& numéros) {
    return essai::AjouteBloc(carte, "1",
                             {{"Driver", Texte(driver)},
                              {"Type de Fonction", Texte("Entrée Analogique")},
                              {"Nom de la Fonction", Texte("Ligne")},
                              {"RS232 - COM", Nombre(3)},
                              {"RS232 - Baud Rate", Nombre(9600)},
                              {"RS232 - Parity", Texte("No parity")},
                              {"RS232 - Data", Nombre(8)},
                              {"RS232 - Stop", Nombre(1)}},
                             numéros, horloge, registre);
  }
  Canal& BlocDeBalance(const char* driverDeCanal) {
    const FonctionRef bloc = Bloc("Drv RS 232", {0});
    Canal& canal = *bloc->Canals()->Item(essai::CléDuCanal(0));
    canal.ParamètresDepuisBD(essai::UneLigne({{"Numéro du Canal", Nombre(0)},
                                              {"Nom du Canal", Texte("Balance")},
                                              {"Status ID", Nombre(0)},
                                              {"Driver canal", Texte(driverDeCanal)}}));
    return canal;
  }
  void Démarre() {
    essai::LitCarte(carte, "Drv RS 232", "");
    carte.Initialise();
  }
  // Passes of 10 ms each.
  void Passe(int nombre = 1) {
    for (int i = 0; i < nombre; ++i) {
      horloge->Avance(10'000);
      carte.MetàJour();
    }
  }

  Ref<sim::HorlogeVirtuelle> horloge = Crée<sim::HorlogeVirtuelle>(100);
  sim::FabriqueLiaisonsSimulée liaisons;
  Carte carte{plateforme};
};

// Every balance: its weight, garbage, a cut, silence, an unplugged line and its return.
TEST_F(UneLigneSérie, LitLesBalances) {
  const struct {
    const char* driver;
    Ref<sim::BalanceSimulée> balance;
    double poids;
    const char* surcharge;
  } cas[] = {
      {"RS232 - Balance LRPC 31", Crée<sim::BalanceLRPC31Simulée>(*horloge), -12.345, "+99999"},
      {"RS232 - Indicateur DEXAL", Crée<sim::IndicateurDEXALSimulé>(*horloge), -12.34,
       "\2SOVERLOA"},
      {"RS232 - Balance JADEVER", Crée<sim::BalanceJADEVERSimulée>(*horloge), -12.345,
       "S/N:0001 N.W.: OL\r\n"},
  };
  for (const auto& c : cas) {
    sim::LigneSérie& ligne = liaisons.Attache(3, c.balance);
    Canal& canal = BlocDeBalance(c.driver);
    Démarre();
    c.balance->poids = c.poids;
    Passe(150);
    EXPECT_NEAR(canal.ValeurCanal(), c.poids, 1e-9) << c.driver;
    c.balance->poids = 4.5;
    Passe(150);
    EXPECT_NEAR(canal.ValeurCanal(), 4.5, 1e-9) << c.driver;
    EXPECT_TRUE(registre->entrées.empty()) << c.driver;

    ligne.pannes.coupée = true;
    c.balance->poids = 15.49;
    Passe(250);
    EXPECT_NEAR(canal.ValeurCanal(), 4.5, 1e-9) << c.driver << ": what is cut is no frame";
    ligne.pannes = {.muette = true};
    Passe(250);
    EXPECT_NEAR(canal.ValeurCanal(), 4.5, 1e-9) << c.driver << ": silence keeps the value";
    ligne.pannes.muette = false;
    ligne.pannes.débranchée = true;
    Passe(350);
    const std::size_t notées = registre->entrées.size();
    EXPECT_GE(notées, 2U) << c.driver << ": told, and tried again";
    EXPECT_LE(notées, 5U) << c.driver << ": once a second, not once a pass";
    EXPECT_NEAR(canal.ValeurCanal(), 4.5, 1e-9) << c.driver;
    ligne.pannes.débranchée = false;
    c.balance->poids = 8.25;
    Passe(250);
    EXPECT_NEAR(canal.ValeurCanal(), 8.25, 1e-9) << c.driver << ": comes back";
    c.balance->trameForcée = c.surcharge;
    Passe(50);
    plateforme.heureDePasse += 100;
    Passe(250);
    EXPECT_NEAR(canal.ValeurCanal(), 8.25, 1e-9) << c.driver;
    EXPECT_EQ(canal.Age(), 100) << c.driver << ": no weight is no reading";
    registre->entrées.clear();
    carte.Fonctions()->Remove("1");
  }
}

TEST_F(UneLigneSérie, RouvreUneBalanceSelonSonDriver) {
  const auto lrpc = Crée<sim::BalanceLRPC31Simulée>(*horloge);
  sim::LigneSérie& ligne = liaisons.Attache(3, lrpc);
  Canal& canal = BlocDeBalance("RS232 - Balance LRPC 31");
  Démarre();
  lrpc->poids = 1.5;
  lrpc->début = 4;
  Passe(500);
  EXPECT_NEAR(ligne.ouvertures, 6, 1) << "every second, even while frames come";
  EXPECT_NEAR(canal.ValeurCanal(), 1.5, 1e-9);
  lrpc->trameForcée = "+99999";
  lrpc->période = 1'100'000;  // alone in the buffer, between two reopenings
  Passe(300);
  EXPECT_NEAR(canal.ValeurCanal(), 1.5, 1e-9) << "no weight";
  carte.Fonctions()->Remove("1");

  const auto dexal = Crée<sim::IndicateurDEXALSimulé>(*horloge);
  dexal->trameForcée = "\2S+01";  // half a frame, and nothing more for a while
  dexal->période = 5'000'000;
  sim::LigneSérie& autre = liaisons.Attache(3, dexal);
  Canal& indicateur = BlocDeBalance("RS232 - Indicateur DEXAL");
  Démarre();
  autre.ouvertures = 0;
  Passe(90);
  EXPECT_EQ(autre.ouvertures, 0);
  Passe(20);
  EXPECT_EQ(autre.ouvertures, 1) << "half a frame is dropped after a second";
  EXPECT_EQ(indicateur.ValeurCanal(), 0);
  dexal->trameForcée.clear();
  dexal->période = 100'000;
  dexal->poids = 3.25;
  Passe(500);
  EXPECT_EQ(autre.ouvertures, 1);
  EXPECT_NEAR(indicateur.ValeurCanal(), 3.25, 1e-9);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UneLigneSérie, ContrôleLesJauges) {
  const auto jauges = Crée<sim::METROSimulé>(*horloge, false);
  jauges->jauges = {{2, 1.0}};
  liaisons.Attache(3, jauges);
  const auto ligne = liaisons.CréeLiaison();
  ligne->PortSérie(3);
  ligne->OuvrePort();
  EXPECT_TRUE(metro::ContrôleCanal(2, *ligne, *horloge));
  horloge->Avance(10'000);
  EXPECT_EQ(jauges->demandes, (std::vector<std::string>{"2E", "2", "2E"}));
  jauges->demandes.clear();
  EXPECT_FALSE(metro::ContrôleCanalMETRO_MUX2_4_8(2, *ligne, *horloge)) << "not the mux's form";
  horloge->Avance(10'000);
  EXPECT_EQ(jauges->demandes, (std::vector<std::string>{"2E", "2", "2D"}));
  const double départ = horloge->Maintenant();
  EXPECT_FALSE(metro::ContrôleCanal(5, *ligne, *horloge));
  EXPECT_NEAR(horloge->Maintenant() - départ, 6e6, 1e4) << "six seconds for a silent one";
}

TEST_F(UneLigneSérie, LitUneJaugeMETRO) {
  const auto jauges = Crée<sim::METROSimulé>(*horloge, false);
  jauges->jauges = {{3, 1.25}};
  sim::LigneSérie& ligne = liaisons.Attache(3, jauges);
  const FonctionRef bloc = Bloc("Drv METRO RS232", {3, 1});
  Démarre();
  Canal& canal = *bloc->Canals()->Item(essai::CléDuCanal(3));
  EXPECT_TRUE(bloc->Enabled());
  EXPECT_EQ(bloc->Metro().Metro_CanalActif, 3);
  jauges->demandes.clear();
  Passe(100);
  EXPECT_EQ(canal.ValeurCanal(), 1.25);
  EXPECT_TRUE(canal.EstLu());
  EXPECT_FALSE(bloc->Canals()->Item(essai::CléDuCanal(1))->EstLu()) << "of the line of another";
  EXPECT_NEAR(static_cast<double>(jauges->demandes.size()), 10, 2) << "ten times a second";
  jauges->suite = "OK";
  jauges->jauges[3] = -7.5;
  jauges->demandes.clear();
  Passe(100);
  EXPECT_EQ(canal.ValeurCanal(), -7.5);
  EXPECT_GT(jauges->demandes.size(), 15U) << "at once behind a frame that ended";
  jauges->valeursForcées[3] = "#         ";
  Passe(50);
  EXPECT_EQ(canal.ValeurCanal(), -7.5);
  jauges->valeursForcées.clear();

  ligne.pannes.débranchée = true;
  Passe(300);
  EXPECT_LE(registre->entrées.size(), 4U);
  EXPECT_EQ(canal.ValeurCanal(), -7.5);
  ligne.pannes.débranchée = false;
  jauges->jauges[3] = 2;
  Passe(200);
  EXPECT_EQ(canal.ValeurCanal(), 2);
}

TEST_F(UneLigneSérie, LaisseHorsServiceUneLigneSansJauge) {
  const auto jauges = Crée<sim::METROSimulé>(*horloge, false);
  liaisons.Attache(3, jauges);
  const FonctionRef bloc = Bloc("Drv METRO RS232", {0, 1});
  Démarre();
  EXPECT_FALSE(bloc->Enabled());
  EXPECT_TRUE(registre->Contient("Numéro du Canal 0, 1 à 8 attendu sur une ligne METRO"));
  jauges->demandes.clear();
  Passe(100);
  EXPECT_TRUE(jauges->demandes.empty());
}

TEST_F(UneLigneSérie, TourneSurLeMultiplexeur) {
  const auto jauges = Crée<sim::METROSimulé>(*horloge, true);
  jauges->jauges = {{1, 0.5}, {3, 1.5}, {4, 2.5}};
  liaisons.Attache(3, jauges);
  const FonctionRef bloc = Bloc("Drv METRO RS232 MUX 2/4/8", {1, 2, 3, 4});
  Démarre();
  EXPECT_FALSE(bloc->Enabled()) << "no gauge is the active one";
  EXPECT_EQ(bloc->Metro().Metro_CanauxValides, (std::vector<std::int32_t>{1, 3, 4}));
  const auto valeur = [&](std::int32_t n) {
    return bloc->Canals()->Item(essai::CléDuCanal(n))->ValeurCanal();
  };
  horloge->Avance(10'000);
  jauges->demandes.clear();
  Passe(20);
  EXPECT_EQ(std::vector<std::string>(jauges->demandes.begin(), jauges->demandes.begin() + 4),
            (std::vector<std::string>{"1", "3", "4", "1"}));
  EXPECT_EQ(valeur(1), 0.5);
  EXPECT_EQ(valeur(2), 0);
  EXPECT_EQ(valeur(3), 1.5);
  EXPECT_EQ(valeur(4), 2.5);

  // One gauge pulled out loses its turns, the others go on.
  jauges->jauges.erase(3);
  jauges->jauges[1] = 9;
  jauges->jauges[4] = 8;
  Passe(100);
  EXPECT_EQ(valeur(1), 9);
  EXPECT_EQ(valeur(3), 1.5);
  EXPECT_EQ(valeur(4), 8);

  // An answer that takes more than 200 ms is dropped.
  jauges->jauges[1] = 33;
  for (int i = 0; i < 10; ++i) {
    horloge->Avance(250'000);
    carte.MetàJour();
  }
  EXPECT_EQ(valeur(1), 9);
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
