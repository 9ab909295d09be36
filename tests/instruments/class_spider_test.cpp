// The measuring amplifier: on its own as a host uses it, as a board of a frame, and block by block.
#include "instruments/class_spider.h"

#include <cmath>

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/spider_simule.h"

namespace zuma {
namespace {

class UnSpider : public testing::Test, public essai::BancInstrument {
 public:
  UnSpider() {
    plateforme.spider = &lib;
    spider.TimerExact(horloge);
  }
  ~UnSpider() override { chassis.Cartes({}); }
  sim::SpiderSimulé lib{*horloge};
  ClassSpider spider{plateforme};
};

TEST_F(UnSpider, MesureLesCanauxConnusDesAppareilsEntiers) {
  lib.Chaîne(7).resize(16);
  for (std::int32_t i = 0; i < 160; ++i) lib.Voie(7, i).type = static_cast<float>(345 + i);
  lib.Voie(7, 450 - 345).état = 5050;
  lib.Voie(7, 451 - 345).état = 5049;
  spider.Initialise(7);
  EXPECT_EQ(spider.NombreCanauxDisponible(), 160) << "measured or not";
  std::vector<std::int32_t> types;
  for (std::int32_t i = 0; i < 160; ++i) {
    if (lib.Voie(7, i).choisie) types.push_back(345 + i);
  }
  EXPECT_EQ(testing::PrintToString(types),
            "{ 350, 351, 352, 420, 421, 451, 452, 453, 454, 455, 456, 501, 502, 503 }");
  for (const auto& [annoncées, disponibles] :
       essai::Cas<int, int>{{25, 20}, {10, 10}, {7, 0}, {0, 0}, {-1, 0}}) {
    lib.annoncées = annoncées;
    spider.Initialise(7);
    EXPECT_EQ(spider.NombreCanauxDisponible(), disponibles) << annoncées;
  }
  spider.Refresh();
  EXPECT_EQ(lib.mesures, 0) << "no channel, no measure";
}

TEST_F(UnSpider, LitA50HertzEtRattrapeSonRetard) {
  lib.Chaîne(7).resize(1);
  for (std::int32_t i = 0; i < 10; ++i) lib.Voie(7, i).grandeur = 0.1 * (i + 1);
  lib.Voie(7, 1).type = 0;
  spider.Initialise(7);
  spider.Refresh();
  EXPECT_EQ(lib.mesures, 0) << "not due yet";
  horloge->Avance(20'000);
  const auto avant = essai::Allocations();
  for (int i = 0; i < 2; ++i) spider.Refresh();
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_EQ(lib.mesures, 1);
  EXPECT_EQ(spider.ValeurCanal(1), static_cast<double>(0.1F)) << "single precision";
  EXPECT_EQ(spider.ValeurCanal(2), 0) << "not measured";
  EXPECT_EQ(spider.ValeurCanal(10), 1);
  EXPECT_EQ(spider.ValeurCanal(11), 0);
  EXPECT_THROW((void)spider.ValeurCanal(0), Echec);
  horloge->Avance(100'000);
  for (int i = 0; i < 20; ++i) spider.Refresh();
  EXPECT_EQ(lib.mesures, 6) << "one measure a call, until the schedule is met again";
  for (const double impossible : {-2.9e32, 9e-41, std::nan("")}) {
    lib.Voie(7, 9).grandeur = impossible;
    horloge->Avance(20'000);
    spider.Refresh();
    EXPECT_EQ(spider.ValeurCanal(10), 1) << impossible << " is no measure";
  }
  lib.muet = true;
  horloge->Avance(100'000);
  spider.Refresh();
  EXPECT_EQ(spider.ValeurCanal(10), 1) << "an error leaves the value";
}

TEST_F(UnSpider, RemplitLesCanauxDeSaCarteQuandLHôteLaRafraîchit) {
  lib.Chaîne(7).resize(1);
  lib.Voie(7, 3).grandeur = -2.5;
  chassis.TimerExact(horloge);
  const FonctionRef bloc = Ajoute("Entrée Analogique", {-1, 3, 10}, {{"Driver", ""}});
  Démarre("Spider V1", "", "7");
  for (int i = 0; i < 5; ++i) {
    horloge->Avance(2'000'000);
    chassis.MetàJour();
  }
  EXPECT_EQ(lib.mesures, 0) << "the pass refreshes the blocks, never the board";
  ASSERT_EQ(registre->entrées.size(), 1U) << "and the host does not either";
  EXPECT_TRUE(registre->entrées[0].message.starts_with(
      "Lectures perdues : aucune de 'c' et 1 voie(s) de plus"));
  carte.MetàJour();
  EXPECT_EQ(Le(bloc, 3).ValeurCanal(), -2.5);
  EXPECT_EQ(Le(bloc, 10).ValeurCanal(), 0) << "above the count";
  EXPECT_TRUE(registre->Contient("canal 0 de l'amplificateur"));
}

TEST_F(UnSpider, MesureLesCanauxDUnBlocDansLeurOrdreEtFermeAvecLui) {
  lib.Chaîne(90).resize(1);
  lib.Voie(90, 0).grandeur = 1;
  const essai::Ligne driver{{"Driver", "Drv RS232 - SPIDER"}};
  FonctionRef bloc = Ajoute("Entrée Analogique", {2, 5}, driver);
  for (int départ = 0; départ < 2; ++départ) bloc->Initialise();
  EXPECT_FALSE(lib.Voie(90, 2).choisie);
  lib.Voie(90, 0).grandeur = 1.5;
  // By rank, as the channels were set up, less the tare; what is no measure leaves the value.
  using Valeurs = std::vector<double>;
  const std::tuple<double, Valeurs> cas[] = {
      {4, {0.5, 4}},     {2.9e32, {0.5, 4}},       {-9e-41, {0.5, 4}},
      {1e300, {0.5, 4}}, {std::nan(""), {0.5, 4}}, {0, {0.5, 0}}};
  for (const auto& [grandeur, lues] : cas) {
    lib.Voie(90, 1).grandeur = grandeur;
    bloc->MetàJour();
    EXPECT_EQ(Lues(bloc), lues) << grandeur;
  }
  EXPECT_EQ(lib.mesures, 6) << "one for all channels";
  lib.muet = true;
  bloc->MetàJour();
  EXPECT_EQ(Lues(bloc), (Valeurs{0.5, 0})) << "an error leaves the values";
  EXPECT_TRUE(registre->entrées.empty());

  bloc->Décharge();
  (void)AjouteSur(AjouteCarte("2"), "Entrée Analogique", {2, 5}, driver);  // never started
  chassis.Cartes()->Remove("2");
  EXPECT_TRUE(lib.AppareilOuvert()) << "neither closes what this block has open";
  carte.Fonctions({});
  bloc = {};
  EXPECT_FALSE(lib.AppareilOuvert() || lib.PortOuvert());
}

}  // namespace
}  // namespace zuma
