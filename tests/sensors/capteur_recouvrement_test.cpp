// A small and a large cell on one force, shown as one sensor.
#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "outils/banc_capteur.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

class UnRecouvrement : public testing::Test, protected BancCapteur {
 protected:
  /// A small cell of 100 kN and a large one that reads `écart` too much; the band goes from 80 to
  /// 90 kN of the small one, and `mini` readings make a gap.
  void Monte(double écart, int mini, double portée = 1000) {
    grand = Cellule(portée);
    petit = Cellule(100);
    écart_ = écart;
    capteur = Monté({{"Type de Capteur", "Recouvrement"},
                     {"Recouvrement - Mini valeur pour recouvrement", mini}},
                    {grand, petit});
  }
  Ref<Capteur> Cellule(double portée) {
    const auto cellule = Monté({{"Arrêt en Cas de Dépassement des sécurités", false},
                                {"Sécurité Maximale en Points", 1e6},
                                {"Sécurité Maximale en Unité", portée}});
    cellule->Canal(Crée<Canal>(plateforme));
    return cellule;
  }
  /// What the sensor shows under that force.
  double Sous(double force) {
    petit->Canal()->ValeurCanal(10 * force);
    grand->Canal()->ValeurCanal(10 * (force + écart_));
    for (const auto& c : {petit, grand, capteur}) c->MetàJour();
    return capteur->ValeurCourante();
  }

  Ref<Capteur> petit, grand, capteur;
  double écart_ = 0;
};

TEST_F(UnRecouvrement, PasseALaGrandeCelluleSansSautEtEnRevient) {
  Monte(6, 3);
  EXPECT_DOUBLE_EQ(Sous(50), 50);
  for (const double force : {80.0, 85.0, 90.0}) EXPECT_DOUBLE_EQ(Sous(force), force);
  EXPECT_DOUBLE_EQ(Sous(90.1), 90.1);  // corrected in the very refresh that changes
  EXPECT_DOUBLE_EQ(grand->ValeurTare(), 6);
  EXPECT_DOUBLE_EQ(Sous(300), 300);
  EXPECT_DOUBLE_EQ(Sous(85), 85);  // inside the band the one shown stays
  EXPECT_DOUBLE_EQ(grand->ValeurTare(), 6);
  EXPECT_DOUBLE_EQ(Sous(79.9), 79.9);
  EXPECT_DOUBLE_EQ(grand->ValeurTare(), 0);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 300);
}

TEST_F(UnRecouvrement, CorrigeDuDernierEcartSIlALuAssez) {
  constexpr double kAucun = std::numeric_limits<double>::quiet_NaN();
  // Gaps while in the band, then what 120 kN reads as behind it, 6 kN too much on the large cell.
  for (const auto& [mini, écarts, montrée] : Cas<int, std::vector<double>, double>{
           {3, {6}, 126},
           {2, {6}, 126},
           {1, {6}, 120},
           // Half of each new gap: 4, then (8 + 4) / 2, then (0 + 6) / 2.
           {2, {4, 8, 0}, 123},
           // What is no number is no gap: neither counted nor learned.
           {2, {kAucun}, 126},
           {2, {4, kAucun}, 126},
           {2, {kAucun, 4}, 126},
           {2, {kAucun, 4, 8}, 120},
           {2, {4, kAucun, 8}, 120}}) {
    Monte(6, mini);
    (void)Sous(50);
    for (const double écart : écarts) {
      écart_ = écart;
      (void)Sous(85);
    }
    écart_ = 6;
    EXPECT_DOUBLE_EQ(Sous(120), montrée) << testing::PrintToString(écarts);
  }
  // Back in the band the count begins again: still the old tare.
  (void)Sous(85);
  écart_ = 9;
  EXPECT_DOUBLE_EQ(Sous(120), 123);
}

TEST_F(UnRecouvrement, DitQuIlEstSonPropreFils) {
  capteur = Monté("Recouvrement", {});
  for (const char* clé : {"1", "2"}) capteur->CapteursFils()->Référence(capteur, clé);
  capteur->Lien({}, {}, {}, nullptr);
  for (const auto& [geste, nom] : Cas<std::function<void()>, const char*>{
           {[&] { capteur->Raz(); }, "Raz"},
           {[&] { capteur->AnnuleRaz(); }, "AnnuleRaz"},
           {[&] { EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire); }, "EtatRAZ"},
           {[&] { capteur->Enabled_bln(true); }, "Enabled_bln"}}) {
    registre->entrées.clear();
    geste();
    EXPECT_TRUE(registre->Contient("est son propre fils) à la ligne ")) << nom;
    EXPECT_TRUE(registre->Contient(nom));
  }
  capteur->CapteursFils({});
}

TEST_F(UnRecouvrement, EchoueTantQuIlNAPasQuittéLaBande) {
  Monte(6, 3);
  EXPECT_EQ(Sous(85), 0);
  EXPECT_TRUE(registre->Contient("Erreur N°5 "));
  registre->entrées.clear();
  EXPECT_DOUBLE_EQ(Sous(120), 126);  // the large one, not corrected
  EXPECT_TRUE(registre->entrées.empty());
  Monte(6, 0, 100);  // equal cells: the second one is the large one, and the small one shows
  EXPECT_DOUBLE_EQ(Sous(50), 56);
}

TEST_F(UnRecouvrement, NeRemetAZéroQueLaPetiteCellule) {
  Monte(6, 3);
  capteur->Raz();
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
  EXPECT_EQ(grand->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  for (int i = 0; i < 4; ++i) (void)Sous(30);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  EXPECT_DOUBLE_EQ(petit->ValeurCourante(), 0);
  capteur->AnnuleRaz();
  EXPECT_DOUBLE_EQ(Sous(30), 30);
}

}  // namespace
}  // namespace zuma::essai
