// The refresh pass: what is due when, what a late host gets back, how a bus is shared, and what a
// failure leaves undone.
#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "outils/passes_mesurees.h"
#include "sim/esclave_modbus.h"
#include "sim/spider_simule.h"

namespace zuma {
namespace {

// Logic inputs and outputs that count their refreshes.
class Ports : public essai::passes::PortsFigés {
 public:
  std::uint16_t Inpw(std::uint16_t) override { return ++lectures, 0; }
  void Outpw(std::uint16_t, std::uint16_t) override { ++écritures; }
  int lectures = 0;
  int écritures = 0;
};

class UnePasse : public testing::Test, public essai::BancInstrument {
 public:
  UnePasse() {
    plateforme.spider = &ampli;
    plateforme.ports = &ports;
    ampli.Chaîne(90).resize(1);
    chassis.TimerExact(timer);
    carte.TimerExact(timer);
    essai::LitCarte(carte, "", "");
  }
  ~UnePasse() override { chassis.Cartes({}); }
  void AjouteBloc(const char* type, const char* driver) {
    Ajoute(type, {0}, {{"Driver", driver}, {"Mise à Jour par Fonction", true}})->Initialise();
  }
  void Passent(double durée) {
    for (const double fin = heure + durée; heure < fin; heure += 0.01) Passe(heure);
  }
  void Passe(double secondes) {
    timer->heure = secondes * 1e6;
    chassis.MetàJour();
  }
  sim::SpiderSimulé ampli{*horloge};
  Ports ports;
  double heure = 10;
};

TEST_F(UnePasse, SertChaqueTypeASonRythmeEtRendLeRetardSousLaLimite) {
  AjouteBloc("Entrée Analogique", "Drv RS232 - SPIDER");
  AjouteBloc("Entrée Logique", "DrvA826PG_DB16P");
  AjouteBloc("Sortie Logique", "DrvA826PG_DB16R");
  const int écritures = ports.écritures;
  // Refreshes of the inputs in a row of passes at these times.
  const auto rendus = [&](double secondes, double pas = 0, int passes = 100) {
    ampli.mesures = ports.lectures = 0;
    for (int i = 0; i < passes; ++i) Passe(secondes + i * pas);
    return std::pair(ampli.mesures, ports.lectures);
  };
  EXPECT_EQ(rendus(10, 0, 1), std::pair(1, 1)) << "all rates are due on the first pass";
  const auto [analogiques, logiques] = rendus(10.001, 0.001, 1000);
  EXPECT_NEAR(analogiques, 200, 2);
  EXPECT_NEAR(logiques, 20, 2);
  EXPECT_EQ(ports.écritures, écritures) << "outputs have no rate";
  chassis.FréquenceEA(0);
  EXPECT_EQ(rendus(12).first, 0);

  chassis.FréquenceEA(128);  // periods that a double holds exactly
  chassis.FréquenceEL(16);
  Passe(20);
  // The mark stands one period after 20 s. 0.375 s later 47 periods are owed, and repaid one a
  // pass: the last one is not, as the comparison is strict.
  EXPECT_EQ(rendus(20.375 + 2.0 / 128).first, 48);
  // 0.625 s later nothing is: one refresh, then none for two periods.
  EXPECT_EQ(rendus(21.25).first, 1);
  EXPECT_EQ(rendus(21.25 + 2.0 / 128).first, 0);
  EXPECT_EQ(rendus(21.25 + 2.0 / 128 + 0.001).first, 1);
  Passe(30);
  EXPECT_GT(rendus(30.75).second, 8) << "the logic inputs have a longer patience";
  chassis.ExigeUnRafraîchissement();
  EXPECT_EQ(rendus(30.7501), std::pair(1, 1)) << "asked for, and not due";
}

TEST_F(UnePasse, AbandonneAprèsUnEchecEtDitOù) {
  chassis.TimerExact({});
  chassis.MetàJour();
  ASSERT_EQ(registre->entrées.size(), 1U);
  const auto& [message, variables] = registre->entrées[0];
  EXPECT_TRUE(message.starts_with("Erreur N°91 (")) << message;
  EXPECT_TRUE(message.ends_with(" de la méthode MetàJour de l'objet Chassis ().")) << message;
  ASSERT_EQ(variables.size(), 11U);
  EXPECT_EQ(variables[3], (std::array<Valeur, 2>{"Variable mdblFréquenceEA", 200.0}));
  EXPECT_TRUE(EstNul(variables[10][0])) << "no block in hand";
  chassis.ChargeErreur({});
  chassis.MetàJour();
  ASSERT_EQ(messages.textes.size(), 1U) << "without a record somebody must be told";
  EXPECT_TRUE(messages.textes[0].starts_with("Erreur N°91 ("));
}

// A failure that comes again on each pass would flush all others out of the record.
TEST_F(UnePasse, DitUneFoisUnEchecQuiDureEtSaFin) {
  AjouteBloc("Entrée Analogique", "DrvModBus");  // it has no line
  Passent(60);
  ASSERT_EQ(registre->entrées.size(), 2U);
  EXPECT_TRUE(registre->entrées[1].message.starts_with("Lectures perdues : aucune de 'c' depuis "));
  const std::string échec = registre->entrées[0].message;
  EXPECT_TRUE(échec.starts_with("Erreur N°91 (")) << échec;
  carte.Fonctions()->Remove("1");
  Passent(9);
  EXPECT_EQ(registre->entrées.size(), 2U);
  Passent(2);
  ASSERT_EQ(registre->entrées.size(), 3U);
  const std::string& fin = registre->entrées[2].message;
  EXPECT_TRUE(fin.starts_with("Plus d'échec depuis 10 s, après 59")) << fin;
  EXPECT_TRUE(fin.ends_with(" : " + échec)) << fin;
  AjouteBloc("Entrée Analogique", "DrvModBus");
  Passent(0.4);
  EXPECT_EQ(registre->entrées.size(), 4U) << "another outage is told";
}

TEST_F(UnePasse, DitChaquePerteDeLecturesEtSaFin) {
  AjouteBloc("Entrée Analogique", "Drv RS232 - SPIDER");
  for (const std::size_t n : {1U, 3U}) {
    ampli.muet = true;
    Passent(3);
    ASSERT_EQ(registre->entrées.size(), n);
    ampli.muet = false;
    Passent(1);
    ASSERT_EQ(registre->entrées.size(), n + 1);
  }
  EXPECT_NE(registre->entrées[0].message, registre->entrées[2].message) << "kept once by a record";
  registre->entrées.clear();
  chassis.FréquenceEA(0.2);
  timer->heure = heure * 1e6;
  chassis.Initialise();
  Passent(21);
  EXPECT_TRUE(registre->entrées.empty()) << "nothing is old before it is due";
}

struct UnBus : essai::BancInstrument {
  UnBus() {
    chassis.TimerExact(horloge);
    for (int i = 0; i < 3; ++i) {
      blocs.push_back(Ajoute("Entrée Analogique", {-1, 0},
                             {{"Driver", "DrvModBus"},
                              {"ModBus - Adresse", "5"},
                              {"ModBus - Fonction", "3"},
                              {"ModBus - Regitre départ", 0}}));
    }
    esclave->registres = {{0, 1}};
    liaisons.Attache(2, esclave);
    Démarre("DrvModBus", "2,19200,N,8,1");
  }
  // The blocks that send a request, in order, over `passes` passes of 5 ms.
  std::string Servis(int passes) {
    std::string servis;
    for (; passes > 0; --passes) {
      std::vector<double> avant;
      for (const FonctionRef& bloc : blocs) avant.push_back(bloc->Modbus_Echange().heureDEnvoi);
      chassis.MetàJour();
      for (std::size_t i = 0; i < blocs.size(); ++i) {
        if (blocs[i]->Modbus_Echange().heureDEnvoi != avant[i]) servis += blocs[i]->Key();
      }
      horloge->Avance(5000);
    }
    return servis;
  }
  Ref<sim::EsclaveModbus> esclave = Crée<sim::EsclaveModbus>(*horloge, std::uint8_t{5});
  std::vector<FonctionRef> blocs;
};

// The turn mark is Nothing at first and wraps: 1 after 1, then 2, then 3. Nothing is started
// without a block in service behind, though one that is out of service has its turn before another.
TEST(UnChassisSurUnBus, TientUnEchangeALaFois) {
  for (const auto& [horsService, servis] :
       essai::Cas<std::size_t, const char*>{{9, "112312"}, {2, "112112"}, {1, "112312"}}) {
    UnBus bus;
    for (std::size_t i = 0; i < 3; ++i) bus.blocs[i]->Enabled(i != horsService);
    EXPECT_EQ(bus.Servis(60).substr(0, 6), servis);
    EXPECT_TRUE(bus.registre->entrées.empty());
    for (const FonctionRef& bloc : bus.blocs) bloc->Enabled(false);
    bus.Servis(60);
    EXPECT_EQ(bus.Servis(20), "");
  }
}

}  // namespace
}  // namespace zuma
