// A sensor from a channel: integration, limits, stop, selection, zero and tare.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_capteur.h"
#include "outils/cas.h"

namespace zuma::essai {
namespace {

using Causes = std::vector<std::string>;

enum { kCorrect, kNonValide, kNonDangereux, kDangereux };
constexpr auto kAcquisition = ENUM_OPERATION_MAV::Acquisition;
constexpr auto kRepos = ENUM_OPERATION_MAV::RienFaire;

constexpr const char* kMaxi = "Sécurité Maximale en Unité";
constexpr const char* kSeuil = "Seuil de Lecture Non Valide";
constexpr const char* kArrêt = "Arrêt en Cas de Dépassement des sécurités";
constexpr const char* kEtalonnage = "Etalonnage par utilisateur";
constexpr const char* kIntégration = "Temps d'Intégration du Canal";
constexpr const char* kLectures = "Nombre de Lecture pour une Mise à Valeur";

class UnCapteurDeForce : public testing::Test, protected BancCapteur {
 protected:
  /// What the sensor shows after that number of refreshes with these points on its channel.
  double Sur(double points, int fois = 1) {
    for (; fois > 0; --fois) Passe(*capteur, points);
    return capteur->ValeurCourante();
  }
  Ref<Capteur> capteur = Monté();
};

TEST_F(UnCapteurDeForce, DonneSonEtatSurChaqueBord) {
  for (const auto& [quoi, colonnes, points, état] : Cas<const char*, Ligne, double, int>{
           {"sous le maxi en unité", {{kMaxi, 100.0}}, 999.9, kCorrect},
           {"sur le maxi en unité", {{kMaxi, 100.0}}, 1000, kDangereux},
           {"sur le mini en unité", {}, -100, kDangereux},
           {"sur le maxi en points", {{"Sécurité Maximale en Points", 600.0}}, 600, kDangereux},
           {"sur le mini en points", {{"Sécurité Minimale en Points", -50.0}}, -50, kDangereux},
           {"pas un nombre", {}, std::nan(""), kDangereux},
           {"arrêt non configuré", {{kArrêt, false}}, 1200, kNonDangereux},
           {"en étalonnage", {{kEtalonnage, true}}, 1200, kCorrect},
           {"sous le seuil", {{kSeuil, 1.0}}, 9, kNonValide},
           {"sur le seuil", {{kSeuil, 1.0}}, 10, kCorrect},
           {"sous le seuil en étalonnage", {{kSeuil, 1.0}, {kEtalonnage, true}}, 9, kCorrect},
           {"dépassement d'abord", {{kSeuil, 1e3}, {kArrêt, false}}, 1200, kNonDangereux}}) {
    capteur = Monté(colonnes);
    sécurité->arrêts = 0;
    Sur(points);
    EXPECT_EQ(capteur->Etat(), état) << quoi;
    EXPECT_EQ(capteur->AU(), état == kDangereux) << quoi;
    EXPECT_EQ(sécurité->arrêts, état == kDangereux ? 1 : 0) << quoi;
  }
  capteur = Monté();
  capteur->InterditAU();
  Sur(1200);
  EXPECT_EQ(capteur->Etat(), kNonDangereux);
  capteur->Enabled_bln(false);
  EXPECT_EQ(capteur->ValeurCourante() + capteur->ValeurEnPoints(), 0);
  capteur->Enabled_bln(true);
  EXPECT_EQ(capteur->ValeurEnPoints(), 1200);
  capteur->Canal({});
  EXPECT_EQ(Sur(250), 0);
}

TEST_F(UnCapteurDeForce, DéclencheAChaquePasseAvecSaCause) {
  traducteur->mots = {{"Texte depassement dangeureux", "Arrêt : capteur"},
                      {"Texte valeur courante UC", " à"},
                      {"Texte valeur courante pts", ", points"}};
  Sur(1234.5, 2);
  EXPECT_EQ(sécurité->arrêts, 2);
  EXPECT_EQ(sécurité->causes, Causes(2, "Arrêt : capteur Force à 123,45kN, points 1234,5"));
  Causes causes{"", "prise", ""};
  for (int i = 0; i < 2; ++i) capteur->TesteAU(causes);  // no room for the second
  const Causes pleines{"", "prise",
                       "Dépassement des limites du Force. Valeur courante en unité : 123,45"};
  EXPECT_EQ(causes, pleines);
  Sur(100);
  EXPECT_EQ(sécurité->arrêts, 2);
  causes[2] = "";
  capteur->TesteAU(causes);
  EXPECT_EQ(causes[2], "");
}

TEST_F(UnCapteurDeForce, DéclencheMêmeQuandLaCauseNePasseParPersonne) {
  traducteur = nullptr;  // the keys themselves
  capteur = Monté();
  Sur(2000);
  EXPECT_EQ(sécurité->causes, Causes{"Texte depassement dangeureux ForceTexte valeur courante UC "
                                     "200kNTexte valeur courante pts 2000"});
  sécurité->refuse = true;
  capteur->ValeurTare(5);
  EXPECT_DOUBLE_EQ(Sur(2000), 195);
  EXPECT_EQ(sécurité->arrêts, 2);
  EXPECT_TRUE(registre->Contient("Erreur N°51 "));
  // A reaction that comes back into the sensor.
  Chassis chassis(plateforme);
  chassis.ChargeErreur(registre);
  chassis.Capteurs()->Add("1", capteur);
  sécurité->réaction = [&] { chassis.DéclencheAU(); };
  Sur(3000);
  EXPECT_EQ(sécurité->arrêts, 3);
  EXPECT_EQ(capteur->Etat(), kDangereux);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 295);
  // Without a safety object the state and the record still tell.
  sécurité = nullptr;
  capteur = Monté();
  Sur(2000);
  EXPECT_TRUE(capteur->AU());
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
}

TEST_F(UnCapteurDeForce, IntègreSelonLaPériodeRéelle) {
  capteur = Monté({{kIntégration, 1.0}});
  Sur(0);
  for (const auto& [secondes, poids] :
       Cas<double, double>{{0.005, 0.216 / 0.005 + 0.54},
                           {0, 0.216 * 300 + 0.54},          // the same instant counts as 1/300
                           {0.0333, 0.216 / 0.0333 + 0.54},  // the filter works below 1/30
                           {0.0334, 1}}) {
    const double ancienne = capteur->ValeurEnPoints();
    Passe(*capteur, 1000, secondes);
    EXPECT_NEAR(capteur->ValeurEnPoints(), ((poids - 1) * ancienne + 1000) / poids, 1e-6);
    Passe(*capteur, 0, 10);  // too slow: the filter starts again from here
  }
  Sur(std::numeric_limits<double>::infinity());
  Sur(500);
  EXPECT_EQ(capteur->ValeurEnPoints(), 500);  // not held by what was no number
}

TEST_F(UnCapteurDeForce, RetientSesExtrêmesEtLEtatDuMaxi) {
  capteur = Monté({{kArrêt, false}});
  for (const double points : {500.0, 1200.0, -50.0, 100.0}) Sur(points);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 120);
  EXPECT_DOUBLE_EQ(capteur->MiniDétecté(), -5);
  EXPECT_EQ(capteur->EtatMaxi(), ENUM_ETAT_CAPTEUR::DépassementNonDangeureux);
  capteur->AutoriseDétectionMaxi(false);
  capteur->RazMaxiDétecté();
  EXPECT_DOUBLE_EQ(capteur->MiniDétecté(), 10);
  Sur(700);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 10);
  capteur->AutoriseDétectionMaxi(true);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 70);
}

TEST_F(UnCapteurDeForce, NeLitQueSiSonParamètreLeSélectionne) {
  const auto mode = Partage(4, "Traction de la barre");
  capteur = Monté({{"Parametre de sélection", 4}, {"Valeur de selection", "Traction de la barre"}});
  Sur(-50);
  EXPECT_DOUBLE_EQ(Sur(500), 50);
  capteur->Raz();
  mode->ValeurParamètre("traction de la barre");
  EXPECT_EQ(Sur(600), 0);
  EXPECT_FALSE(capteur->CapteurSelectionne());
  EXPECT_EQ(capteur->MaxiDétecté(), 0);
  EXPECT_DOUBLE_EQ(capteur->MiniDétecté(), -5);
  EXPECT_EQ(capteur->ValeurEnPoints(), 500);
  EXPECT_EQ(capteur->EtatRAZ(), kAcquisition);
}

TEST_F(UnCapteurDeForce, AjouteSonOffsetEtDitUnOffsetIllisible) {
  const auto offset = Partage(9, "1,5");
  capteur = Monté({{"Offset", 9}});
  EXPECT_DOUBLE_EQ(Sur(500), 51.5);
  offset->ValeurParamètre("un peu");
  Sur(600);
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
  EXPECT_EQ(registre->entrées[0].variables.at(17),
            (TableVariables::value_type{"Variable mdblValeurCourante", 51.5}));
  EXPECT_DOUBLE_EQ(Sur(2000), 51.5) << "the value is held, the limits are watched";
  EXPECT_EQ(sécurité->arrêts, 1);
  // What is being measured is held too.
  capteur->Raz();
  capteur->Tare();
  Sur(600, 5);
  EXPECT_EQ(capteur->EtatRAZ(), kAcquisition);
  EXPECT_EQ(capteur->EtatTare(), kAcquisition);
}

TEST_F(UnCapteurDeForce, MesureSonZéroSurLesPointsBruts) {
  capteur->Raz();
  for (const double points : {40.0, 50.0}) {
    EXPECT_DOUBLE_EQ(Sur(points), points / 10);
    EXPECT_EQ(capteur->EtatRAZ(), kAcquisition);
  }
  EXPECT_DOUBLE_EQ(Sur(60), 1);  // 60 less the mean of 50
  EXPECT_EQ(capteur->EtatRAZ(), kRepos);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 1);  // restarted from the lower limit
  capteur->Raz();
  EXPECT_DOUBLE_EQ(Sur(250, 3), 0);  // the new zero replaces the old one
  capteur->AnnuleRaz();
  EXPECT_DOUBLE_EQ(Sur(250), 25);

  capteur = Monté({{kIntégration, 1.0}});
  Sur(400);
  capteur->Raz();
  EXPECT_DOUBLE_EQ(Sur(400, 3), 0);  // the filter shows no step
  capteur->Raz();
  Sur(1000, 2);
  capteur->Initialise();  // a start begins it again
  Sur(400, 3);
  EXPECT_EQ(capteur->EtatRAZ(), kRepos);
  EXPECT_DOUBLE_EQ(capteur->ValeurEnPoints(), 0);
}

TEST_F(UnCapteurDeForce, ReferenceSonZéroAuPointQuiLitZéro) {
  capteur->PointX(1, -20);  // 0 units stand at 1000 / 6 points
  capteur->Raz();
  EXPECT_NEAR(Sur(400, 4), 0, 1e-12);
  capteur->PointX(1, 0);
  capteur->PointX(2, 0);  // every point reads 0 units: no zero to be had
  capteur->ValeurTare(3);
  capteur->Raz();
  EXPECT_EQ(Sur(2500), -3) << "the refresh is finished, limits and all";
  EXPECT_EQ(sécurité->arrêts, 1);
  EXPECT_EQ(capteur->EtatRAZ(), kRepos);
  EXPECT_TRUE(registre->Contient("Erreur N°11 "));
  capteur = Monté();
  capteur->PointY(2, 0);  // all points on one abscissa: no units, the points are watched still
  Sur(100);
  EXPECT_EQ(capteur->Etat(), kCorrect);
  Sur(2500);
  EXPECT_EQ(sécurité->arrêts, 2);
}

TEST_F(UnCapteurDeForce, MesureSaTare) {
  std::int16_t rangée = 0;  // both signs, and one alone on the end segments
  for (const int unités : {-100, -50, 50, 100}) {
    capteur->PointX(++rangée, unités);
    capteur->PointY(rangée, 10 * unités);
  }
  capteur->Tare(5.0);
  capteur->Tare(99.0);  // lost: one runs
  EXPECT_TRUE(std::isnan(Sur(std::nan("")))) << "and no reading of a tare";
  Sur(300, 3);
  EXPECT_TRUE(capteur->EtatDeLaTare());
  EXPECT_DOUBLE_EQ(capteur->ValeurTare(), 25);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), -20);  // the wanted 5 less the tare, once
  EXPECT_DOUBLE_EQ(Sur(300), 5);
  capteur->AnnuleTare();
  EXPECT_FALSE(capteur->EtatDeLaTare());
  EXPECT_DOUBLE_EQ(Sur(300), 30);
  capteur->Tare("beaucoup");
  EXPECT_EQ(capteur->EtatTare(), kRepos);
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
}

TEST_F(UnCapteurDeForce, PartageSommeEtCompteEntreZéroEtTare) {
  capteur = Monté({{kLectures, 4}});
  capteur->Raz();
  Sur(100);
  capteur->Tare();  // clears the sum: from here on two readings a refresh
  Sur(100);
  EXPECT_EQ(capteur->EtatRAZ(), kAcquisition);
  Sur(100);
  // The fourth reading is the tare's: (100 + 10 + 100 + 10) / 4, and the zero ends without result.
  EXPECT_DOUBLE_EQ(capteur->ValeurTare(), 55);
  EXPECT_EQ(capteur->EtatRAZ(), kRepos);
  capteur->AnnuleTare();
  EXPECT_DOUBLE_EQ(Sur(100), 10);

  capteur = Monté();
  capteur->Raz();
  capteur->Tare();
  Sur(100, 2);  // the third reading is the zero's: (100 + 10 + 100) / 3
  EXPECT_EQ(capteur->EtatTare(), kRepos);
  EXPECT_FALSE(capteur->EtatDeLaTare());
  EXPECT_DOUBLE_EQ(capteur->ValeurEnPoints(), 30);
}

TEST_F(UnCapteurDeForce, SurveilleSesLimitesPendantUnZéroQuiNeFinitPas) {
  capteur = Monté({{kLectures, 40000}});
  capteur->Raz();
  Sur(100, 40001);
  EXPECT_EQ(capteur->EtatRAZ(), kAcquisition);
  Sur(2000);
  EXPECT_EQ(sécurité->arrêts, 1);
  EXPECT_TRUE(registre->entrées.empty());
  capteur = Monté({{kLectures, -4}});
  capteur->Raz();
  Sur(70);
  EXPECT_EQ(capteur->EtatRAZ(), kRepos);
}

TEST_F(UnCapteurDeForce, NAllouePasEnSeRafraîchissant) {
  (void)Partage(1, "0,00000000000000125");
  (void)Partage(2, "Compression de l'éprouvette");
  capteur = Monté({{kIntégration, 1.0},
                   {"Offset", 1},
                   {"Parametre de sélection", 2},
                   {"Valeur de selection", "Compression de l'éprouvette"}});
  capteur->Raz();
  capteur->Tare();
  const std::int64_t avant = Allocations();
  Sur(100, 10);
  EXPECT_EQ(Allocations(), avant);
  EXPECT_TRUE(capteur->CapteurSelectionne());
}

}  // namespace
}  // namespace zuma::essai
