// Serial frames as functions on bytes, then balances and gauges through blocks and channels.
#include "boards/trames_serie.h"

#include <gtest/gtest.h>

#include "boards/metro.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/balances_simulees.h"
#include "sim/metro_simule.h"

namespace zuma {
namespace {

using essai::Cas;
using namespace trames_serie;

// 12345 with its digits in any order: place in the top bits, digit in the low ones.
TEST(TramesSérie, LRPC) {
  const Octets trame{'\xA4', '\x05', '\x24', '\x43', '\x62', '\x81'};
  const Octets autre{'\xA8', '\x01', '\x20', '\x40', '\x60', '\x80'};
  for (const auto& [quoi, texte, valeur] : Cas<const char*, Octets, double>{
           // 7: the kept one
           {"in their order", trame, 12345},
           {"in any order", {"\x81\x62\xA8\x05\x24\x43", 6}, -12345},
           {"bit 4 is free", {"\xA4\x15\x34\x43\x62\x81", 6}, 12345},
           {"places 6 and 7", {"\xA4\xC9\xE9\x43\x62\x81", 6}, 7},
           {"no digit", {"\xA4\x05\x2A\x43\x62\x81", 6}, 7},
           {"the first frame counts", trame + autre, 12345},
           {"no whole frame", trame.substr(0, 5), 7},
           {"its last byte lost", trame.substr(0, 5) + autre, -1},
           {"two signs", {"\xA4\xA8\x05\x24\x43\x62\x81", 7}, -12345},
           {"one byte turned over", {"\xA4\x05\x04\x43\x62\x81", 6}, 7}}) {
    EXPECT_EQ(DecortiqueBuffer_dbl(texte, 7), valeur) << quoi;
  }
}

TEST(TramesSérie, DEXAL) {
  const std::pair<const char*, double> cas[] = {
      {"\2S+012.34", 12.34},  {"\2S-012,34", -12.34}, {"\2S+999999", 999999},
      {"\2S-  1.50", -1.5},   {"\2S  -1.50", -1.5},   {"\2S+00012.", 12},
      {"+-+012.34", 12.34},   {"\2S+0x2.34", 7},      {"\2S+1.2.34", 7},
      {"\2S1234567", 7},      {"\2S+12 .34", 7},      {"\2S1-2.345", -12.345},
      {"\2S012.34-", -12.34}, {"\2S+12.34-", 7},      {"\2S+     ", 7},
      {"\2S+012.3", 7},       {"\2S+01.500\2S+", 1.5}};
  for (const auto& [texte, valeur] : cas) {
    EXPECT_NEAR(DecortiqueBufferDEXAL_dbl(texte, 7), valeur, 1e-9) << texte;
  }
}

TEST(TramesSérie, JADEVER) {
  for (const auto& [reçu, trouvée, lue, reste] : Cas<const char*, bool, double, const char*>{
           {"N.W.:  12.345kg\r\nN.W", true, 12.345, "N.W"},
           {"G.W.: 1 kg\r\nN.W.:-  3 kg\r\n", true, -3, ""},
           {"N.W.:- -3 kg\r\n", true, 7, ""},
           {"G.W.: 1 kg\r\nN.W.: -3,5 kg\r\n", true, -3.5, ""},
           {"N.W.: 2.5 kg\r\nPCS: 10\r\n", true, 2.5, ""},
           {"N.W.: 2.5 kg\r\nLOT 17\r\n", true, 2.5, ""},
           {"N.W.: OL\r\n", true, 7, ""},
           {"N.W.:", false, 0, "N.W.:"},
           {"PCS: 10\r\nN", false, 0, "N"}}) {
    Octets texte = reçu;
    double valeur = 0;
    EXPECT_EQ(DecortiqueJADEVER(texte, valeur, 7), trouvée) << reçu;
    EXPECT_EQ(valeur, lue) << reçu;
    EXPECT_EQ(texte, reste) << reçu;
  }
}

// A line of the single form; `code` and `champ` as they stand in it.
Octets LigneMETRO(char canal, const char* code, const char* champ) {
  return Octets(1, canal) + " " + code + " " + champ + " mm    \r\n";
}

TEST(TramesSérie, METRO) {
  const Octets une = LigneMETRO('1', "MW", "+0012.3456");
  const Octets deux = LigneMETRO('2', "MW", "-0000.5000");
  using Voie = std::optional<double>;
  for (const auto& [pourquoi, reçu, finie, v1, v2, reste] :
       Cas<const char*, Octets, bool, Voie, Voie, Octets>{
           {"the active channel, more behind", une + "1 M", true, 12.3456, {}, "1 M"},
           {"the last line gives its value", une, false, 12.3456, {}, ""},
           {"an empty line behind", une + "\r\n", true, 12.3456, {}, "\r\n"},
           {"the walk goes past another channel", deux + une + "x", true, 12.3456, -0.5, "x"},
           {"a fragment is dropped", "rest\r\n" + une + "x", true, 12.3456, {}, "x"},
           {"nothing but a fragment", "rest\r\n", false, {}, {}, ""},
           {"no line is complete", une.substr(0, 20), false, {}, {}, une.substr(0, 20)},
           {"# is no value", LigneMETRO('1', "MW", "#         ") + deux, false, {}, -0.5, ""},
           {"blanks", LigneMETRO('1', "MW", "-   2.3456") + "x", true, -2.3456, {}, "x"},
           {"no measure", LigneMETRO('1', "ER", "+0012.3456") + "x", false, {}, {}, "x"},
           {"no channel", LigneMETRO('?', "MW", "+0012.3456") + "x", false, {}, {}, "x"}}) {
    Octets texte = reçu;
    TableMETRO table;
    JaugesLues lues;
    EXPECT_EQ(Decortique_METRO(texte, 1, table, lues), finie) << pourquoi;
    EXPECT_EQ(table[1], v1) << pourquoi;
    EXPECT_EQ(table[2], v2) << pourquoi;
    EXPECT_EQ(texte, reste) << pourquoi;
  }
  Octets texte = "3MW 000000000+0001.2500 mm \r\n";
  std::int32_t canal = 0;
  double valeur = 0;
  EXPECT_TRUE(Decortique_METRO_MUX_2_4_8(texte, canal, valeur));
  EXPECT_EQ(std::pair(canal, valeur), std::pair(3, 1.25));
  texte = "3MW 000000000#          mm \r\n3MW 000000000+0001.25\r\n";
  EXPECT_FALSE(Decortique_METRO_MUX_2_4_8(texte, canal, valeur));
}

class UneLigneSérie : public testing::Test, public essai::BancInstrument {
 public:
  // A block on port 3, started.
  FonctionRef Monte(const char* driver, const std::vector<std::int32_t>& numéros,
                    const char* driverDeCanal = nullptr) {
    const FonctionRef bloc = Ajoute("Entrée Analogique", numéros,
                                    {{"Driver", driver},
                                     {"RS232 - COM", 3},
                                     {"RS232 - Baud Rate", 9600},
                                     {"RS232 - Parity", "No parity"},
                                     {"RS232 - Data", 8},
                                     {"RS232 - Stop", 1}});
    if (driverDeCanal != nullptr)
      LitCanal(Le(bloc, 0), {{"Status ID", 0}, {"Driver canal", driverDeCanal}});
    Démarre("Drv RS 232");
    return bloc;
  }
  // Passes of 10 ms each.
  void Passe(int nombre) {
    for (; nombre > 0; --nombre) {
      horloge->Avance(10'000);
      carte.MetàJour();
    }
  }
};

// Every balance: its weight, garbage, a cut, silence, an unplugged line and its return.
TEST_F(UneLigneSérie, LitLesBalances) {
  using Balance = Ref<sim::BalanceSimulée>;
  for (const auto& [driver, balance, poids, surcharge] :
       Cas<const char*, Balance, double, const char*>{
           {"RS232 - Balance LRPC 31", Crée<sim::BalanceLRPC31Simulée>(*horloge), -12.345,
            "+99999"},
           {"RS232 - Indicateur DEXAL", Crée<sim::IndicateurDEXALSimulé>(*horloge), -12.34,
            "\2SOVERLOA"},
           {"RS232 - Balance JADEVER", Crée<sim::BalanceJADEVERSimulée>(*horloge), -12.345,
            "S/N:0001 N.W.: OL\r\n"}}) {
    SCOPED_TRACE(driver);
    sim::Pannes& pannes = liaisons.Attache(3, balance).pannes;
    const Canal& canal = Le(Monte("Drv RS 232", {0}, driver), 0);
    const auto lit = [&, &b = balance](double nouveau, int passes) {
      b->poids = nouveau;
      Passe(passes);
      return canal.ValeurCanal();
    };
    EXPECT_NEAR(lit(poids, 150), poids, 1e-9);
    EXPECT_NEAR(lit(4.5, 150), 4.5, 1e-9);
    EXPECT_TRUE(registre->entrées.empty());
    pannes.coupée = true;
    EXPECT_NEAR(lit(15.49, 250), 4.5, 1e-9) << "what is cut is no frame";
    pannes = {.muette = true};
    EXPECT_NEAR(lit(15.49, 250), 4.5, 1e-9) << "silence keeps the value";
    pannes = {.débranchée = true};
    EXPECT_NEAR(lit(15.49, 350), 4.5, 1e-9);
    EXPECT_NEAR(static_cast<double>(registre->entrées.size()), 3.5, 1.5)
        << "told, and tried again: once a second, not once a pass";
    pannes = {};
    EXPECT_NEAR(lit(8.25, 250), 8.25, 1e-9) << "comes back";
    balance->trameForcée = surcharge;
    Passe(50);
    plateforme.heureDePasse += 100;
    EXPECT_NEAR(lit(1, 250), 8.25, 1e-9);
    EXPECT_EQ(canal.Age(), 100) << "no weight is no reading";
    registre->entrées.clear();
    carte.Fonctions()->Remove("1");
  }
}

TEST_F(UneLigneSérie, RouvreUneBalanceSelonSonDriver) {
  const auto lrpc = Crée<sim::BalanceLRPC31Simulée>(*horloge);
  const sim::LigneSérie& une = liaisons.Attache(3, lrpc);
  const Canal& canal = Le(Monte("Drv RS 232", {0}, "RS232 - Balance LRPC 31"), 0);
  lrpc->poids = 1.5;
  lrpc->début = 4;
  Passe(500);
  EXPECT_NEAR(une.ouvertures, 6, 1) << "every second, even while frames come";
  lrpc->trameForcée = "+99999";
  lrpc->période = 1'100'000;  // alone in the buffer, between two reopenings
  Passe(300);
  EXPECT_NEAR(canal.ValeurCanal(), 1.5, 1e-9) << "no weight";
  carte.Fonctions()->Remove("1");

  const auto dexal = Crée<sim::IndicateurDEXALSimulé>(*horloge);
  dexal->trameForcée = "\2S+01";  // half a frame, and nothing more for a while
  dexal->période = 5'000'000;
  sim::LigneSérie& autre = liaisons.Attache(3, dexal);
  const Canal& indicateur = Le(Monte("Drv RS 232", {0}, "RS232 - Indicateur DEXAL"), 0);
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

// Gauges on port 3.
class DesJauges : public UneLigneSérie {
 public:
  using Demandes = std::vector<std::string>;
  Ref<sim::METROSimulé> Jauges(const std::map<int, double>& valeurs, bool mux = false) {
    auto jauges = Crée<sim::METROSimulé>(*horloge, mux);
    jauges->jauges = valeurs;
    liaisons.Attache(3, jauges);
    return jauges;
  }
  static Demandes Posées(sim::METROSimulé& jauges) { return std::exchange(jauges.demandes, {}); }
};

TEST_F(DesJauges, SontLuesUneParLigne) {
  const auto jauges = Jauges({{3, 1.25}});
  sim::Pannes& pannes = liaisons.Ligne(3)->pannes;
  const FonctionRef bloc = Monte("Drv METRO RS232", {3, 1});
  const Canal& canal = Le(bloc, 3);
  EXPECT_TRUE(bloc->Enabled());
  EXPECT_EQ(bloc->Etat<EtatMETRO>().Metro_CanalActif, 3);
  EXPECT_EQ(Posées(*jauges), (Demandes{"1E", "1", "2E", "2", "3E", "3", "3E", "4E", "4", "5E", "5",
                                       "6E", "6", "7E", "7", "8E", "8"}));
  Passe(100);
  EXPECT_EQ(canal.ValeurCanal(), 1.25);
  EXPECT_TRUE(canal.EstLu());
  EXPECT_FALSE(Le(bloc, 1).EstLu()) << "of the line of another";
  EXPECT_NEAR(static_cast<double>(Posées(*jauges).size()), 10, 2) << "ten times a second";
  jauges->suite = "OK";
  jauges->jauges[3] = -7.5;
  Passe(100);
  EXPECT_GT(Posées(*jauges).size(), 15U) << "at once behind a frame that ended";
  jauges->valeursForcées[3] = "#         ";
  Passe(50);
  EXPECT_EQ(canal.ValeurCanal(), -7.5);
  jauges->valeursForcées.clear();
  pannes.débranchée = true;
  Passe(300);
  EXPECT_LE(registre->entrées.size(), 4U);
  EXPECT_EQ(canal.ValeurCanal(), -7.5);
  pannes = {};
  jauges->jauges[3] = 2;
  Passe(200);
  EXPECT_EQ(canal.ValeurCanal(), 2);
}

TEST_F(DesJauges, ManquentSurUneLigneHorsService) {
  const auto jauges = Jauges({});
  const double départ = horloge->Maintenant();
  EXPECT_FALSE(Monte("Drv METRO RS232", {0, 1})->Enabled());
  EXPECT_NEAR(horloge->Maintenant() - départ, 8 * 6e6, 1e4) << "six seconds for each";
  EXPECT_TRUE(registre->Contient("Numéro du Canal 0, 1 à 8 attendu sur une ligne METRO"));
  (void)Posées(*jauges);
  Passe(100);
  EXPECT_EQ(Posées(*jauges), Demandes{});
}

TEST_F(DesJauges, TournentSurLeMultiplexeur) {
  const auto jauges = Jauges({{1, 0.5}, {3, 1.5}, {4, 2.5}}, true);
  const FonctionRef bloc = Monte("Drv METRO RS232 MUX 2/4/8", {1, 2, 3, 4});
  EXPECT_FALSE(bloc->Enabled()) << "no gauge is the active one";
  EXPECT_EQ(bloc->Etat<EtatMETRO>().Metro_CanauxValides, (std::vector<std::int32_t>{1, 3, 4}));
  horloge->Avance(10'000);
  (void)Posées(*jauges);
  Passe(20);
  Demandes premières = Posées(*jauges);
  premières.resize(4);
  EXPECT_EQ(premières, (Demandes{"1", "3", "4", "1"}));
  EXPECT_EQ(Lues(bloc), (std::vector<double>{0.5, 0, 1.5, 2.5}));
  // One gauge pulled out loses its turns, the others go on.
  jauges->jauges = {{1, 9}, {4, 8}};
  Passe(100);
  EXPECT_EQ(Lues(bloc), (std::vector<double>{9, 0, 1.5, 8}));
  // An answer that takes more than 200 ms is dropped.
  jauges->jauges[1] = 33;
  for (int i = 0; i < 10; ++i) {
    horloge->Avance(250'000);
    carte.MetàJour();
  }
  EXPECT_EQ(Le(bloc, 1).ValeurCanal(), 9);
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
