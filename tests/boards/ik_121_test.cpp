// The encoder board through its block and channels, against a twin made from its register map.
#include "boards/ik_121.h"

#include <limits>

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"
#include "outils/cas.h"
#include "sim/carte_ik121.h"

namespace zuma {
namespace {

using Comptes = std::vector<double>;

class DesCodeurs : public testing::Test, public essai::BancInstrument {
 public:
  DesCodeurs() {
    bus.Attache(0x300, 16, jumelle);
    plateforme.ports = &bus;
  }
  ~DesCodeurs() override { chassis.Cartes({}); }
  // What the axes read with the encoders at these counts, `secondes` later.
  Comptes Lit(double un, double deux, double secondes = 0) {
    horloge->Avance(secondes * 1e6);
    jumelle.bornes.entréesAnalogiques[0] = un / 10'000;
    jumelle.bornes.entréesAnalogiques[1] = deux / 10'000;
    bloc->MetàJour();
    return Lues(bloc);
  }
  // At an address that is not a multiple of 16: its low digit does not count.
  void Démarre() { BancInstrument::Démarre("", "", "305"); }

  sim::CarteIK121 jumelle;
  sim::BusPorts bus;
  FonctionRef bloc = Ajoute("Entrée Analogique", {1, 2}, {{"Driver", "DrvIK121"}});
};

TEST_F(DesCodeurs, ComptentChacunDepuisLeDépart) {
  jumelle.bornes.entréesAnalogiques[0] = 0.0777;
  Démarre();
  EXPECT_EQ(jumelle.départs, (std::array{2, 2})) << "with the block, then with its channel";
  Le(bloc, 1).NbLecture(3);
  for (const std::int32_t latch : {0, 1}) {
    plateforme.réglages.ik121.latch = latch;
    for (const auto& [un, deux] :
         essai::Cas<double, double>{{5, -70000}, {-65536, 131072}, {-2147483647, 2147483647}}) {
      EXPECT_EQ(Lit(777 + un, deux, 20), (Comptes{-un, -deux})) << latch;  // no faster than that
    }
  }
  jumelle.regardsAvantPrêt = 50;
  EXPECT_EQ(Lit(12, 0, 20), (Comptes{765, 0})) << "a late latch is awaited";
  EXPECT_TRUE(registre->entrées.empty());
  // A board that hangs: each axis tells so and keeps its value, and the pass goes on.
  jumelle.regardsAvantPrêt = std::numeric_limits<int>::max();
  const double avant = horloge->Maintenant();
  EXPECT_EQ(Lit(99, 0), (Comptes{765, 0}));
  EXPECT_EQ(registre->entrées.size(), 2U);
  EXPECT_TRUE(registre->Contient("Axe 2 : la carte ne donne pas son compte"));
  EXPECT_NEAR(horloge->Maintenant() - avant, 2 * IK_121::kAttenteLatch, 60);
  jumelle.regardsAvantPrêt = 0;
  EXPECT_EQ(Lit(99, 0), (Comptes{678, 0})) << "back by itself";
}

TEST_F(DesCodeurs, NePrennentPasUnCompteImpossible) {
  Démarre();
  ASSERT_EQ(Lit(500, 0), (Comptes{-500, 0}));
  for (const double compte : {1e9, -1e9, 3e6}) {
    EXPECT_EQ(Lit(compte, 7), (Comptes{-500, -7})) << compte;
  }
  EXPECT_TRUE(registre->Contient("Axe 1 : compte -1000000000 impossible derrière 500"));
  EXPECT_EQ(Lit(600, 7), (Comptes{-600, -7}));
  jumelle.pannes.morte = true;  // pulled
  EXPECT_EQ(Lit(600, 7), (Comptes{-600, -7}));
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
  Démarre();
  EXPECT_EQ(Lit(0, -1e12, 3600), (Comptes{0, 1e12}));
  plateforme.réglages.ik121.latch = 2;
  bloc->MetàJour();
  EXPECT_TRUE(registre->Contient("Latch 2 absent"));
}

}  // namespace
}  // namespace zuma
