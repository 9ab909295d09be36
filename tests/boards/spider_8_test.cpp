// The amplifier read block by block, from its inputs to the channels.
#include <cmath>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "sim/spider_simule.h"

namespace zuma {
namespace {

class UnBlocSpider : public testing::Test, public essai::BancInstrument {};

TEST_F(UnBlocSpider, MesureSesCanauxDansLeurOrdreEtFermeAvecLui) {
  sim::SpiderSimulé lib(*horloge);
  plateforme.spider = &lib;
  lib.Chaîne(90).resize(1);
  lib.Voie(90, 0).grandeur = 1;
  const essai::Ligne driver{{"Driver", "Drv RS232 - SPIDER"}};
  FonctionRef bloc = Ajoute("Entrée Analogique", {2, 5}, driver);
  const auto valeur = [&](std::int32_t numéro) { return Le(bloc, numéro).ValeurCanal(); };
  for (int départ = 0; départ < 2; ++départ) bloc->Initialise();
  EXPECT_FALSE(lib.Voie(90, 2).choisie);
  lib.Voie(90, 0).grandeur = 1.5;
  lib.Voie(90, 1).grandeur = 4;
  bloc->MetàJour();
  EXPECT_EQ(lib.mesures, 1);
  EXPECT_EQ(valeur(2), 0.5) << "by rank, as the channels were set up, less the tare";
  EXPECT_EQ(valeur(5), 4);
  for (const double impossible : {2.9e32, -9e-41, 1e300, std::nan("")}) {
    lib.Voie(90, 1).grandeur = impossible;
    bloc->MetàJour();
    EXPECT_EQ(valeur(5), 4) << impossible << " is no measure";
  }
  lib.Voie(90, 1).grandeur = 0;
  bloc->MetàJour();
  EXPECT_EQ(valeur(5), 0);
  lib.muet = true;
  bloc->MetàJour();
  EXPECT_EQ(valeur(2), 0.5) << "an error leaves the value";
  EXPECT_TRUE(registre->entrées.empty());

  bloc->Décharge();
  (void)AjouteSur(AjouteCarte("2"), "Entrée Analogique", {2, 5}, driver);  // never started
  chassis.Cartes()->Remove("2");
  EXPECT_TRUE(lib.AppareilOuvert()) << "neither closes what this block has open";
  carte.Fonctions({});
  bloc = {};
  EXPECT_FALSE(lib.AppareilOuvert());
  EXPECT_EQ(lib.PortOuvert(), std::nullopt);
}

}  // namespace
}  // namespace zuma
