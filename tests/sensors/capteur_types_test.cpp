// Sensors made from other sensors or from the clock.
#include <cmath>

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_capteur.h"
#include "outils/cas.h"
#include "sensors/regression.h"

namespace zuma::essai {
namespace {

using T = ENUM_TYPE_CAPTEUR;
using Capteurs_ = std::vector<Ref<Capteur>>;
using Valeurs = std::vector<double>;

class UnCapteurDérivé : public testing::Test, protected BancCapteur {
 protected:
  /// Refreshes twice; the second time without an allocation, unless it fails.
  double Rafraîchi(const Ref<Capteur>& capteur) {
    capteur->MetàJour();
    const std::int64_t avant = Allocations();
    capteur->MetàJour();
    if (registre->entrées.empty()) {
      EXPECT_EQ(Allocations(), avant);
    }
    return capteur->ValeurCourante();
  }
};

TEST_F(UnCapteurDérivé, CombineSesFils) {
  for (const auto& [type, opérateur, valeurs, valeur] :
       Cas<const char*, const char*, Valeurs, double>{
           {"Moyen", "", {2, 4, 9}, 5},
           {"Moyen", "", {}, 77},
           {"Combinaison", "+", {2, 4, 9}, 15},
           {"Combinaison", "-", {2}, -2},
           {"Combinaison", "-", {2, 5, 9}, -3},
           {"Combinaison", "*", {2, 4, 9}, 72},
           {"Combinaison", "/", {4}, 0.25},
           {"Combinaison", "/", {6, 4, 9}, 1.5},
           {"Combinaison", "/", {6, 0}, 0},
           {"Combinaison", "?", {2, 3}, 77},
           {"Combinaison", "+", {}, 0},
           {"Contrainte", "", {}, 0},
           {"DeltaL/L", "", {}, 0},
           {"DeltaL/L", "", {5}, 0},  // no reference length
           {"Selectionnable", "", {5}, 77},
           {"PPC", "", {5}, 0},  // a child that passed no selection
           {"SOLARTRON LVDT", "", {5}, 77},
           {"Combinaison", "/", {0}, 77}}) {
    EXPECT_TRUE(registre->entrées.empty());
    Capteurs_ fils;
    for (const double v : valeurs) fils.push_back(Libre(v));
    const auto capteur = Monté({{"Type de Capteur", type}, {"Opérateur", opérateur}}, fils);
    capteur->ValeurCourante(77);
    EXPECT_DOUBLE_EQ(Rafraîchi(capteur), valeur) << type << opérateur << valeurs.size();
  }
  EXPECT_TRUE(registre->Contient("Erreur N°11 "));
  // A number that is no kind has a value written from outside, and its tare taken off each time.
  const auto inconnu = Libre(77);
  inconnu->TypeDeCapteur(static_cast<T>(1003));
  inconnu->ValeurTare(1);
  EXPECT_EQ(Rafraîchi(inconnu), 75);
}

TEST_F(UnCapteurDérivé, PrendLesFilsQueSaCollectionAMaintenant) {
  const auto différence =
      Monté({{"Type de Capteur", "Combinaison"}, {"Opérateur", "-"}}, {Libre(5), Libre(2)});
  EXPECT_EQ(Rafraîchi(différence), 3);
  différence->CapteursFils()->Remove("1");
  différence->CapteursFils()->Référence(Libre(9), "1");
  EXPECT_EQ(Rafraîchi(différence), 7);
  const auto orphelin = Libre();
  orphelin->TypeDeCapteur(T::CapteurMoyen);
  orphelin->MetàJour();
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
  const auto troué = Monté("Contrainte", {});
  troué->CapteursFils()->Référence(Libre(3), "2");
  troué->MetàJour();
  EXPECT_TRUE(registre->Contient("Erreur N°5 "));
}

TEST_F(UnCapteurDérivé, DonneLeTempsDansSonUnité) {
  for (const auto& [unité, valeur] : Cas<const char*, double>{
           {"h", 1.5}, {"Mn", 90}, {"s", 5400}, {"ms", 5.4e6}, {"µs", 5.4e9}, {"j", 0}}) {
    const auto montre = Monté({{"Type de Capteur", "Temps"}, {"Unité d'Etalonnage", unité}});
    timer->heure += 5400e6;
    EXPECT_DOUBLE_EQ(Rafraîchi(montre), valeur) << unité;
    EXPECT_EQ(montre->MaxiDétecté(), 0);  // the clock has no extremes
    montre->Raz();
    EXPECT_EQ(montre->ValeurCourante(), 0) << unité;
  }
}

TEST_F(UnCapteurDérivé, DonneLaVitesseSurSaFenêtre) {
  const auto position = Libre();
  const auto vitesse = Monté("Vitesse", {position});  // 0.5 s at 200 Hz
  const auto ramène = [&](int passes, double vers) {
    for (; passes > 0; --passes) {
      timer->heure += 5000;
      position->ValeurCourante(timer->heure / 1e6 * vers);
      vitesse->MetàJour();
    }
    return vitesse->ValeurCourante();
  };
  EXPECT_NEAR(ramène(200, 2), 2, 1e-9);
  EXPECT_GT(std::abs(ramène(99, 0.25) - 0.25), 0.1);  // one sample of the other ramp is left
  EXPECT_NEAR(ramène(1, 0.25), 0.25, 1e-9);
  (void)Rafraîchi(vitesse);
}

TEST_F(UnCapteurDérivé, DonneLAllongementEnPourCent) {
  const auto longueur = Partage(3, "50");
  const auto allongement = Libre(1);
  const auto pourcent = Monté({{"Type de Capteur", "DeltaL/L"}, {"S", 3}}, {allongement});
  allongement->AutoriseDétectionMaxi(true);  // its maximum is 1 from now on
  EXPECT_DOUBLE_EQ(Rafraîchi(pourcent), 2);
  EXPECT_DOUBLE_EQ(pourcent->MaxiDétecté(), 2);
  longueur->ValeurParamètre("0");
  EXPECT_EQ(Rafraîchi(pourcent), 0);
  longueur->ValeurParamètre("longue");
  pourcent->MetàJour();
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
}

TEST_F(UnCapteurDérivé, SelectionneParUnParamètre) {
  const auto choix = Partage(3, "2");
  const auto capteur =
      Monté({{"Type de Capteur", "Selectionnable"}, {"S", 3}, {"Valeur de selection", "2,0"}},
            {Libre(8)});
  EXPECT_EQ(Rafraîchi(capteur), 8);
  for (const char* autre : {"3", "deux", ""}) {
    choix->ValeurParamètre(autre);
    EXPECT_EQ(Rafraîchi(capteur), 0) << autre;
  }
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnCapteurDérivé, PrendLePlusPetitFilsSelectionné) {
  const Capteurs_ fils{Libre(2, 100), Libre(1, 10), Libre(3, 10)};
  const auto choisi = Monté("PPC", fils);
  for (const auto& f : fils) f->MetàJour();
  EXPECT_EQ(Rafraîchi(choisi), 1);  // the first of the two smallest
  EXPECT_EQ(choisi->MaxiCapteurUnité(), 10);
  fils[1]->UnitéEtalonnage("mm");
  choisi->Initialise();
  EXPECT_EQ(messages.textes,
            std::vector<std::string>{
                "Problem on sensor 'Force'. Unit of sensors linked are not the same."});
}

TEST_F(UnCapteurDérivé, PasseLeZéroEtLaMiseEnServiceÀSesFils) {
  const Capteurs_ fils{Monté(), Monté()};
  const auto plusPetit = Monté("PPC", fils);
  plusPetit->Raz();
  for (const auto& f : fils) EXPECT_EQ(f->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
  fils[1]->Enabled_bln(false);
  plusPetit->Enabled_bln(false);
  EXPECT_TRUE(fils[0]->Enabled_bln() && !fils[1]->Enabled_bln());  // only enabling reaches them
  plusPetit->Enabled_bln(true);
  EXPECT_TRUE(fils[1]->Enabled_bln());
}

class UnePente : public testing::Test {
 protected:
  std::optional<double> Avec(double t, double v, double n) { return régression->Ajoute(t, v, n); }
  std::unique_ptr<Régression> régression = std::make_unique<Régression>();
};

// The timer of a machine that has run for a month, a ramp of 7 then of 3 units per second.
TEST_F(UnePente, OublieCeQuiEstSortiEtRestePréciseAprèsUnMois) {
  constexpr double kMois = 30 * 86400;
  double pente = 0;
  for (int i = 0; i < 20000; ++i) {
    const double t = i * 0.005;
    pente = Avec(kMois + t, i < 1000 ? 7 * t : 3 * t + 20, 50).value_or(pente);
  }
  EXPECT_NEAR(pente, 3, 1e-6);
}

TEST_F(UnePente, CompteDesZérosTantQueLaSuiteNEstPasPleine) {
  // One sample at (2, 10) and three zeros: (4*20 - 10*2) / (4*4 - 2*2).
  EXPECT_DOUBLE_EQ(*Avec(2, 10, 4), 5);
  EXPECT_DOUBLE_EQ(*Avec(3, 11, 4), (4 * 53 - 21 * 5) / (4 * 13.0 - 5 * 5));
  (void)Avec(5, 16, 4);
  EXPECT_DOUBLE_EQ(*Avec(6, 17, 4), (4 * 235 - 54 * 16) / (4 * 74.0 - 16 * 16));
}

TEST_F(UnePente, NeGardePasUnEchantillonSansPente) {
  EXPECT_FALSE(Avec(5, 1, 1));  // a run of one has no slope
  EXPECT_TRUE(std::isnan(*Avec(1, std::nan(""), 4)));
  EXPECT_DOUBLE_EQ(*Avec(2, 10, 4), 5);  // nothing is left of them
}

// Whatever the sums have kept of the samples before.
TEST_F(UnePente, TientUnRunDeDeuxAuMêmeInstant) {
  for (int i = 0; i < 1000; ++i) {
    const double t = 1e6 + i * 0.1;
    (void)Avec(t, i, 2);
    EXPECT_FALSE(Avec(t, i + 5, 2)) << i;
    EXPECT_FALSE(Avec(t, std::nan(""), 2)) << i;
  }
  EXPECT_NEAR(*Avec(1e6 + 100, 1000, 2), 10, 1e-6);
}

TEST_F(UnePente, EchoueAuDelàDe5000) {
  for (int i = 1; i <= 5000; ++i) (void)Avec(i, i, 6000);
  EXPECT_THROW((void)Avec(5001, 1, 6000), Echec);
}

}  // namespace
}  // namespace zuma::essai
