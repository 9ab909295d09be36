// A sensor from a channel: integration, limits, stop, selection, zero and tare.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "outils/allocations.h"
#include "outils/banc_capteur.h"

namespace zuma {
namespace {

using essai::Avec;
using essai::Ligne;
using essai::LigneDeCapteur;
using essai::Texte;

constexpr int kCorrect = 0;
constexpr int kNonValide = 1;
constexpr int kNonDangereux = 2;
constexpr int kDangereux = 3;

class UnCapteurDeForce : public testing::Test, protected essai::BancCapteur {
 protected:
  void Passe(double points) { BancCapteur::Passe(*capteur, points); }
  void Devient(const Ligne& ligne) { capteur = Normal(ligne); }
  Ref<Capteur> capteur = Normal();
};

TEST_F(UnCapteurDeForce, ConvertitLesPointsDeSonCanal) {
  Passe(250);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 25);
  EXPECT_EQ(capteur->ValeurEnPoints(), 250);
  capteur->Enabled_bln(false);
  EXPECT_EQ(capteur->ValeurCourante(), 0);
  EXPECT_EQ(capteur->ValeurEnPoints(), 0);
  capteur->Enabled_bln(true);
  capteur->Canal({});
  Passe(250);
  EXPECT_EQ(capteur->ValeurCourante(), 0);
  EXPECT_TRUE(registre->entrées.empty());
}

TEST_F(UnCapteurDeForce, DonneSonEtatSurChaqueBord) {
  const struct {
    const char* quoi;
    double points;
    double seuil;
    bool arrêt, autorise, étalonne;
    int état;
  } cas[] = {
      {"dedans", 500, 0, true, true, false, kCorrect},
      {"sur le maxi en unité", 1000, 0, true, true, false, kDangereux},
      {"sous le maxi en unité", 999.9, 0, true, true, false, kCorrect},
      {"sur le mini en unité", -100, 0, true, true, false, kDangereux},
      {"arrêt non configuré", 1200, 0, false, true, false, kNonDangereux},
      {"arrêt interdit", 1200, 0, true, false, false, kNonDangereux},
      {"en étalonnage", 1200, 0, true, true, true, kCorrect},
      {"sous le seuil", 9, 1, true, true, false, kNonValide},
      {"sur le seuil", 10, 1, true, true, false, kCorrect},
      {"sous le seuil en étalonnage", 9, 1, true, true, true, kCorrect},
      {"le dépassement l'emporte", 1200, 1000, false, true, false, kNonDangereux},
      {"pas un nombre", std::nan(""), 0, true, true, false, kDangereux},
  };
  for (const auto& c : cas) {
    Ligne ligne = Avec(LigneDeCapteur(), "Seuil de Lecture Non Valide", Valeur(c.seuil));
    ligne = Avec(ligne, "Sécurité Maximale en Unité", Valeur(100.0));
    ligne = Avec(ligne, "Arrêt en Cas de Dépassement des sécurités", Valeur(c.arrêt));
    Devient(Avec(ligne, "Etalonnage par utilisateur", Valeur(c.étalonne)));
    if (!c.autorise) capteur->InterditAU();
    sécurité->arrêts = 0;
    Passe(c.points);
    EXPECT_EQ(capteur->Etat(), c.état) << c.quoi;
    EXPECT_EQ(capteur->AU(), c.état == kDangereux) << c.quoi;
    EXPECT_EQ(sécurité->arrêts, c.état == kDangereux ? 1 : 0) << c.quoi;
  }
}

TEST_F(UnCapteurDeForce, SurveilleAussiSesPoints) {
  Devient(Avec(LigneDeCapteur(), "Sécurité Maximale en Points", Valeur(600.0)));
  Passe(600);
  EXPECT_EQ(capteur->Etat(), kDangereux);
  Devient(Avec(LigneDeCapteur(), "Sécurité Minimale en Points", Valeur(-50.0)));
  Passe(-50);
  EXPECT_EQ(capteur->Etat(), kDangereux);
  Devient(LigneDeCapteur());
  sécurité->arrêts = 0;
  capteur->PointY(2, 0);  // all points on one abscissa: no units any more
  Passe(100);
  EXPECT_EQ(capteur->Etat(), kCorrect);
  EXPECT_TRUE(registre->Contient("Erreur N°11 "));
  Passe(2500);
  EXPECT_EQ(capteur->Etat(), kDangereux);
  EXPECT_EQ(sécurité->arrêts, 1);
}

TEST_F(UnCapteurDeForce, DéclencheAChaquePasseAvecSaCause) {
  traducteur->mots = {{"Texte depassement dangeureux", "Arrêt : capteur"},
                      {"Texte valeur courante UC", " à"},
                      {"Texte valeur courante pts", ", points"}};
  Passe(1234.5);
  Passe(1234.5);
  EXPECT_EQ(sécurité->arrêts, 2);
  ASSERT_EQ(sécurité->causes.size(), 2U);
  EXPECT_EQ(sécurité->causes[0], "Arrêt : capteur Force à 123,45kN, points 1234,5");

  std::vector<std::string> causes{"", "prise", "", ""};
  capteur->TesteAU(causes);
  EXPECT_EQ(causes[0], "");
  EXPECT_EQ(causes[2], "Dépassement des limites du Force. Valeur courante en unité : 123,45");
  Passe(100);
  EXPECT_EQ(sécurité->arrêts, 2);
  const auto avant = causes;
  capteur->TesteAU(causes);
  EXPECT_EQ(causes, avant);
  Passe(1234.5);
  std::vector<std::string> pleine{"", "prise"};
  capteur->TesteAU(pleine);
  EXPECT_EQ(pleine[1], "prise");
}

TEST_F(UnCapteurDeForce, DéclencheMêmeQuandLaCauseNePasseParPersonne) {
  const auto muet = Lu(LigneDeCapteur());
  muet->Canal(canal);
  muet->Lien(sécurité, {}, {}, nullptr);  // no translator: the keys themselves
  BancCapteur::Passe(*muet, 2000);
  ASSERT_EQ(sécurité->causes.size(), 1U);
  EXPECT_EQ(sécurité->causes[0],
            "Texte depassement dangeureux ForceTexte valeur courante UC 200kN"
            "Texte valeur courante pts 2000");
  sécurité->refuse = true;
  BancCapteur::Passe(*muet, 2000);
  EXPECT_EQ(sécurité->arrêts, 2);
  EXPECT_TRUE(registre->Contient("Erreur N°51 "));
  // Without a safety object the state and the record still tell.
  const auto seul = Lu(LigneDeCapteur());
  seul->Canal(canal);
  BancCapteur::Passe(*seul, 2000);
  EXPECT_TRUE(seul->AU());
  EXPECT_TRUE(registre->Contient("Erreur N°91 "));
}

TEST_F(UnCapteurDeForce, SupporteUneRéactionQuiRentreDansLaPasse) {
  Chassis chassis(plateforme);
  chassis.ChargeErreur(registre);
  chassis.Capteurs()->Add("1", capteur);
  sécurité->réaction = [&] { chassis.DéclencheAU(); };
  Passe(2000);
  EXPECT_EQ(sécurité->arrêts, 1);
  EXPECT_EQ(capteur->Etat(), kDangereux);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 200);
}

TEST_F(UnCapteurDeForce, IntègreSelonLaPériodeRéelle) {
  Devient(Avec(LigneDeCapteur(), "Temps d'Intégration du Canal", Valeur(1.0)));
  Passe(0);
  const struct {
    const char* quoi;
    double secondes;
    double poids;
  } cas[] = {
      {"5 ms", 0.005, 0.216 / 0.005 + 0.54},
      {"même instant : un trois-centième", 0, 0.216 * 300 + 0.54},
      {"au bord du filtre", 0.0334, 1},
      {"sous le bord", 0.0333, 0.216 / 0.0333 + 0.54},
      {"trop lent", 0.1, 1},
  };
  for (const auto& c : cas) {
    const double ancienne = capteur->ValeurEnPoints();
    BancCapteur::Passe(*capteur, 1000, c.secondes);
    EXPECT_NEAR(capteur->ValeurEnPoints(), ((c.poids - 1) * ancienne + 1000) / c.poids, 1e-6)
        << c.quoi;
    BancCapteur::Passe(*capteur, 0, 10);  // too slow: the filter starts again from here
  }
  Passe(std::numeric_limits<double>::infinity());
  BancCapteur::Passe(*capteur, 500, 0.005);
  EXPECT_EQ(capteur->ValeurEnPoints(), 500);  // not held by what was no number
}

TEST_F(UnCapteurDeForce, RetientSesExtrêmesEtLEtatDuMaxi) {
  Devient(Avec(LigneDeCapteur(), "Arrêt en Cas de Dépassement des sécurités", Valeur(false)));
  for (const double points : {500.0, 1200.0, -50.0, 100.0}) Passe(points);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 120);
  EXPECT_DOUBLE_EQ(capteur->MiniDétecté(), -5);
  EXPECT_EQ(capteur->EtatMaxi(), ENUM_ETAT_CAPTEUR::DépassementNonDangeureux);
  capteur->AutoriseDétectionMaxi(false);
  capteur->RazMaxiDétecté();
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 10);
  EXPECT_DOUBLE_EQ(capteur->MiniDétecté(), 10);
  Passe(700);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 10);
  capteur->AutoriseDétectionMaxi(true);
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 70);
}

TEST_F(UnCapteurDeForce, NeLitQueSiSonParamètreLeSélectionne) {
  const auto mode = Partage(4, "Traction de la barre");
  capteur = Lu(Avec(Avec(LigneDeCapteur(), "Parametre de sélection", Valeur(4)),
                    "Valeur de selection", Texte("Traction de la barre")));
  capteur->Canal(canal);
  capteur->Lien(sécurité, paramètres, traducteur, nullptr);
  Passe(-50);
  Passe(500);
  EXPECT_TRUE(capteur->CapteurSelectionne());
  capteur->Raz();
  mode->ValeurParamètre("traction de la barre");
  Passe(600);
  EXPECT_FALSE(capteur->CapteurSelectionne());
  EXPECT_EQ(capteur->ValeurCourante(), 0);
  EXPECT_EQ(capteur->MaxiDétecté(), 0);
  EXPECT_DOUBLE_EQ(capteur->MiniDétecté(), -5);
  EXPECT_EQ(capteur->ValeurEnPoints(), 500);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
}

TEST_F(UnCapteurDeForce, AjouteSonOffsetEtDitUnOffsetIllisible) {
  const auto offset = Partage(9, "1,5");
  capteur = Lu(Avec(LigneDeCapteur(), "Offset", Valeur(9)));
  capteur->Canal(canal);
  capteur->Lien(sécurité, paramètres, traducteur, nullptr);
  Passe(500);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 51.5);
  offset->ValeurParamètre("un peu");
  Passe(600);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 51.5);
  ASSERT_EQ(registre->entrées.size(), 1U);
  EXPECT_TRUE(registre->entrées[0].message.starts_with("Erreur N°13 "));
  const TableVariables& v = registre->entrées[0].variables;
  ASSERT_EQ(v.size(), 23U);
  EXPECT_EQ(v[1][0], Texte("Variable musrEtat"));
  EXPECT_EQ(v[17][0], Texte("Variable mdblValeurCourante"));
  EXPECT_EQ(v[17][1], Valeur(51.5));
  EXPECT_EQ(v[22][0], Texte("Canal utilisé mobjCanal"));
  Passe(2000);  // the value is held, the limits are watched
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 51.5);
  EXPECT_EQ(sécurité->arrêts, 1);
}

TEST_F(UnCapteurDeForce, MesureSonZéroSurLesPointsBruts) {
  capteur->Raz();
  for (const double points : {40.0, 50.0}) {
    Passe(points);
    EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
    EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), points / 10);
  }
  Passe(60);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 1);  // 60 less the mean of 50
  EXPECT_DOUBLE_EQ(capteur->MaxiDétecté(), 1);     // restarted from the lower limit
  Passe(250);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 20);
  capteur->Raz();
  for (int i = 0; i < 3; ++i) Passe(250);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 0);  // the new zero replaces the old one
  capteur->AnnuleRaz();
  Passe(250);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 25);
}

TEST_F(UnCapteurDeForce, NeMontrePasDeSautDuFiltreAprèsUnZéro) {
  Devient(Avec(LigneDeCapteur(), "Temps d'Intégration du Canal", Valeur(1.0)));
  Passe(400);
  capteur->Raz();
  for (int i = 0; i < 3; ++i) Passe(400);
  EXPECT_EQ(capteur->ValeurCourante(), 0);
}

TEST_F(UnCapteurDeForce, ReferenceSonZéroAuPointQuiLitZéro) {
  capteur->PointX(1, -20);
  capteur->PointY(1, 0);  // 0 units stand at 1000 / 6 points
  capteur->Raz();
  for (int i = 0; i < 3; ++i) Passe(400);
  Passe(400);
  EXPECT_NEAR(capteur->ValeurCourante(), 0, 1e-12);
}

TEST_F(UnCapteurDeForce, AbandonneUnZéroQueSaTableNAPas) {
  capteur->PointX(2, 0);  // every point reads 0 units
  capteur->Raz();
  Passe(100);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  EXPECT_TRUE(registre->Contient("Erreur N°11 "));
  Passe(2500);
  EXPECT_EQ(sécurité->arrêts, 1);
}

TEST_F(UnCapteurDeForce, MesureSaTare) {
  capteur->Tare(Valeur(5));
  capteur->Tare(Valeur(99));  // lost: one runs
  Passe(std::nan(""));        // no reading
  for (int i = 0; i < 3; ++i) Passe(300);
  EXPECT_TRUE(capteur->EtatDeLaTare());
  EXPECT_DOUBLE_EQ(capteur->ValeurTare(), 25);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), -20);  // the wanted 5 less the tare, once
  Passe(300);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 5);
  capteur->AnnuleTare();
  EXPECT_FALSE(capteur->EtatDeLaTare());
  Passe(300);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 30);
  capteur->Tare(Texte("beaucoup"));
  EXPECT_EQ(capteur->EtatTare(), ENUM_OPERATION_MAV::RienFaire);
  EXPECT_TRUE(registre->Contient("Erreur N°13 "));
}

TEST_F(UnCapteurDeForce, PartageSommeEtCompteEntreZéroEtTare) {
  Devient(Avec(LigneDeCapteur(), "Nombre de Lecture pour une Mise à Valeur", Valeur(4)));
  capteur->Raz();
  Passe(100);
  capteur->Tare();  // clears the sum: from here on two readings a refresh
  Passe(100);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
  Passe(100);
  // The fourth reading is the tare's: (100 + 10 + 100 + 10) / 4, and the zero ends without result.
  EXPECT_DOUBLE_EQ(capteur->ValeurTare(), 55);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
  capteur->AnnuleTare();
  Passe(100);
  EXPECT_DOUBLE_EQ(capteur->ValeurCourante(), 10);

  Devient(Avec(LigneDeCapteur(), "Nombre de Lecture pour une Mise à Valeur", Valeur(3)));
  capteur->Raz();
  capteur->Tare();
  Passe(100);
  Passe(100);  // the third reading is the zero's: (100 + 10 + 100) / 3
  EXPECT_EQ(capteur->EtatTare(), ENUM_OPERATION_MAV::RienFaire);
  EXPECT_FALSE(capteur->EtatDeLaTare());
  EXPECT_DOUBLE_EQ(capteur->ValeurEnPoints(), 30);
}

TEST_F(UnCapteurDeForce, SurveilleSesLimitesPendantUnZéroQuiNeFinitPas) {
  Devient(Avec(LigneDeCapteur(), "Nombre de Lecture pour une Mise à Valeur", Valeur(40000)));
  capteur->Raz();
  for (int i = 0; i < 40001; ++i) Passe(100);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::Acquisition);
  Passe(2000);
  EXPECT_EQ(sécurité->arrêts, 1);
  EXPECT_TRUE(registre->entrées.empty());
  Devient(Avec(LigneDeCapteur(), "Nombre de Lecture pour une Mise à Valeur", Valeur(-4)));
  capteur->Raz();
  Passe(70);
  EXPECT_EQ(capteur->EtatRAZ(), ENUM_OPERATION_MAV::RienFaire);
}

TEST_F(UnCapteurDeForce, NAllouePasEnSeRafraîchissant) {
  const auto offset = Partage(1, "0,00000000000000125");
  const auto mode = Partage(2, "Compression de l'éprouvette");
  Ligne ligne = Avec(LigneDeCapteur(), "Temps d'Intégration du Canal", Valeur(1.0));
  ligne = Avec(Avec(ligne, "Offset", Valeur(1)), "Parametre de sélection", Valeur(2));
  capteur = Lu(Avec(ligne, "Valeur de selection", Texte("Compression de l'éprouvette")));
  capteur->Canal(canal);
  capteur->Lien(sécurité, paramètres, traducteur, nullptr);
  capteur->Raz();
  capteur->Tare();
  const std::int64_t avant = essai::Allocations();
  for (int i = 0; i < 10; ++i) Passe(100 + i);
  EXPECT_EQ(essai::Allocations(), avant);
  EXPECT_TRUE(capteur->CapteurSelectionne());
}

}  // namespace
}  // namespace zuma
