// The encoder board through its block and channels, against a twin made from its register map.
#include "boards/ik_121.h"

#include <limits>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/carte_ik121.h"

namespace zuma {
namespace {

class DesCodeurs : public testing::Test, public essai::BancInstrument {
 public:
  DesCodeurs() {
    bus.Attache(0x300, 16, jumelle);
    plateforme.ports = &bus;
  }
  ~DesCodeurs() override { chassis.Cartes({}); }
  // At an address that is not a multiple of 16: its low digit does not count.
  void Démarre(const std::vector<std::int32_t>& axes) {
    bloc = Ajoute("Entrée Analogique", axes, {{"Driver", "DrvIK121"}});
    BancInstrument::Démarre("", "", "305");
  }
  void Place(std::size_t rang, double comptes) {
    jumelle.bornes.entréesAnalogiques[rang] = comptes / 10'000;
  }
  double Axe(std::int32_t numéro) { return Le(bloc, numéro).ValeurCanal(); }

  sim::CarteIK121 jumelle;
  sim::BusPorts bus;
  FonctionRef bloc;
};

TEST_F(DesCodeurs, ComptentChacunDepuisLeDépart) {
  Place(0, 777);
  Démarre({1, 2});
  EXPECT_EQ(jumelle.départs, (std::array{2, 2})) << "with the block, then with its channel";
  Le(bloc, 1).NbLecture(3);
  for (const std::int32_t latch : {0, 1}) {
    plateforme.réglages.ik121.latch = latch;
    for (const auto& [un, deux] :
         {std::pair{5.0, -70000.0}, {-65536.0, 131072.0}, {-2147483647.0, 2147483647.0}}) {
      horloge->Avance(20e6);  // no encoder moves as far at once
      Place(0, 777 + un);
      Place(1, deux);
      bloc->MetàJour();
      EXPECT_EQ(Axe(1), -un) << latch;
      EXPECT_EQ(Axe(2), -deux) << latch;
    }
  }
  jumelle.regardsAvantPrêt = 50;
  horloge->Avance(20e6);
  Place(0, 12);
  bloc->MetàJour();
  EXPECT_EQ(Axe(1), 765) << "a late latch is awaited";
  EXPECT_TRUE(registre->entrées.empty());
  // A board that hangs: each axis tells so and keeps its value, and the pass goes on.
  jumelle.regardsAvantPrêt = std::numeric_limits<int>::max();
  Place(0, 99);
  const double avant = horloge->Maintenant();
  bloc->MetàJour();
  EXPECT_EQ(Axe(1), 765);
  EXPECT_EQ(registre->entrées.size(), 2U);
  EXPECT_TRUE(registre->Contient("Axe 2 : la carte ne donne pas son compte"));
  EXPECT_NEAR(horloge->Maintenant() - avant, 2 * IK_121::kAttenteLatch, 60);
  jumelle.regardsAvantPrêt = 0;
  bloc->MetàJour();
  EXPECT_EQ(Axe(1), 678) << "back by itself";
}

TEST_F(DesCodeurs, NePrennentPasUnCompteImpossible) {
  Démarre({1, 2});
  Place(0, 500);
  bloc->MetàJour();
  ASSERT_EQ(Axe(1), -500);
  for (const double compte : {1e9, -1e9, 3e6}) {
    Place(0, compte);
    Place(1, 7);
    bloc->MetàJour();
    EXPECT_EQ(Axe(1), -500) << compte;
    EXPECT_EQ(Axe(2), -7) << compte;
  }
  EXPECT_TRUE(registre->Contient("Axe 1 : compte -1000000000 impossible derrière 500"));
  Place(0, 600);
  bloc->MetàJour();
  EXPECT_EQ(Axe(1), -600);
  jumelle.pannes.morte = true;  // pulled
  bloc->MetàJour();
  EXPECT_EQ(Axe(1), -600);
  EXPECT_TRUE(registre->Contient("Axe 1 : la carte ne répond plus"));
}

TEST_F(DesCodeurs, AjoutentLeMotHautOuNonSelonLeRéglage) {
  using enum MotHautIK121;
  using Mots = std::array<std::uint16_t, 3>;
  for (const auto& [mots, signe, compte] : essai::Cas<Mots, std::int64_t, std::int64_t>{
           {{0xFFFB, 0xFFFF, 0xFFFF}, -5, -5},
           {{0xFFFF, 0x7FFF, 0}, 0x7FFFFFFF, 0x7FFFFFFF},
           {{0, 0x8000, 0x8000}, INT32_MIN, INT32_MIN - 0x7FFF00000000},
           {{2, 1, 3}, 65538, 3 * 0x100000000 + 65538}}) {
    EXPECT_EQ(CompteIK121(mots, Compte), compte);
    EXPECT_EQ(CompteIK121(mots, Signe), signe);
  }
  EXPECT_THROW((void)CompteIK121(Mots{0, 0x8000, 0}, Signe), Echec);
  plateforme.réglages.ik121.motHaut = Compte;
  Démarre({2});
  Place(1, -1e12);
  horloge->Avance(3600e6);
  bloc->MetàJour();
  EXPECT_EQ(Axe(2), 1e12);
  plateforme.réglages.ik121.latch = 2;
  bloc->MetàJour();
  EXPECT_TRUE(registre->Contient("Latch 2 absent"));
}

}  // namespace
}  // namespace zuma
