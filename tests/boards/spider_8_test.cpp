// The amplifier read block by block, from its inputs to the channels.
#include <cmath>

#include <gtest/gtest.h>

#include "outils/arbre.h"
#include "sim/spider_simule.h"

namespace zuma {
namespace {

using essai::Texte;

TEST(UnBlocSpider, MesureSesCanauxDansLeurOrdreEtFermeAvecLui) {
  essai::Banc banc;
  sim::HorlogeVirtuelle horloge;
  sim::SpiderSimulé lib(horloge);
  banc.plateforme.spider = &lib;
  lib.Chaîne(90).resize(1);
  lib.Voie(90, 0).grandeur = 1;
  const auto ajoute = [&](Carte& carte) {
    return essai::AjouteBloc(carte, "1",
                             {{"Driver", Texte("Drv RS232 - SPIDER")},
                              {"Type de Fonction", Texte("Entrée Analogique")},
                              {"Nom de la Fonction", Texte("Bloc")}},
                             {2, 5}, banc.timer, banc.registre);
  };
  Carte carte(banc.plateforme);
  FonctionRef bloc = ajoute(carte);
  const auto valeur = [&](std::int32_t numéro) {
    return bloc->Canals()->Item(essai::CléDuCanal(numéro))->ValeurCanal();
  };
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
  EXPECT_TRUE(banc.registre->entrées.empty());

  bloc->Décharge();
  {
    Carte jamaisDémarrée(banc.plateforme);
    (void)ajoute(jamaisDémarrée);
  }
  EXPECT_TRUE(lib.AppareilOuvert()) << "neither closes what this block has open";
  carte.Fonctions({});
  bloc = {};
  EXPECT_FALSE(lib.AppareilOuvert());
  EXPECT_EQ(lib.PortOuvert(), std::nullopt);
}

}  // namespace
}  // namespace zuma
