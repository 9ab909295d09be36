#include "platform/linux/registre_erreurs.h"

#include <new>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "outils/dossier_provisoire.h"

namespace zuma::linux_ {
namespace {

using essai::DossierProvisoire;
using essai::Lit;

RéglagesRegistre Réglages(std::filesystem::path fichier) {
  RéglagesRegistre réglages;
  réglages.fichier = std::move(fichier);
  réglages.instant = [] { return std::string("2024-05-03 14:03:22"); };
  return réglages;
}

const TableVariables kVariables{{Nul{}, Nul{}},
                                {"Variable musrEtat", 3},
                                {"Variable mdblTemps", 1.5},
                                {"Variable mstrNom", "Force\nfausse ligne"},
                                {Nul{}, Nul{}},
                                {"Variable vData", Nul{}}};

TEST(RegistreErreurs, EcritUneEntréeLisible) {
  const DossierProvisoire dossier;
  const auto fichier = dossier.Chemin() / "à créer" / "Erreur.txt";
  RegistreErreurs registre(Réglages(fichier));
  registre.AjouteErreur("Erreur N°91 (Objet absent).", kVariables);
  registre.AjouteErreur("suivante", TableVariables(1));
  EXPECT_EQ(Lit(fichier),
            "2024-05-03 14:03:22  Erreur N°91 (Objet absent).\n"
            "    Variable musrEtat = 3\n"
            "    Variable mdblTemps = 1,5\n"
            "    Variable mstrNom = \"Force fausse ligne\"\n"
            "    Variable vData = Null\n"
            "2024-05-03 14:03:22  suivante\n");
  ASSERT_EQ(registre.Entrées().size(), 2U);
  EXPECT_EQ(registre.Entrées()[0].variables, kVariables);
  EXPECT_EQ(registre.NonEcrites(), 0U);
}

TEST(RegistreErreurs, GardeLesDernières) {
  RéglagesRegistre réglages = Réglages({});
  réglages.entrées = 3;
  RegistreErreurs registre(réglages);
  for (int i = 0; i < 10; ++i) registre.AjouteErreur(std::to_string(i), {});
  ASSERT_EQ(registre.Entrées().size(), 3U);
  EXPECT_EQ(registre.Entrées().front().message, "7");
  EXPECT_EQ(registre.Entrées().back().message, "9");
  EXPECT_EQ(registre.Total(), 10U);
  EXPECT_EQ(registre.NonEcrites(), 0U);
}

TEST(RegistreErreurs, SurvitAUnFichierImpossibleEtRevient) {
  const DossierProvisoire dossier;
  const auto obstacle = dossier.Chemin() / "obstacle";
  std::ofstream(obstacle) << "un fichier, pas un dossier";
  RegistreErreurs registre(Réglages(obstacle / "Erreur.txt"));
  registre.AjouteErreur("perdue pour le fichier", {});
  EXPECT_EQ(registre.NonEcrites(), 1U);
  EXPECT_EQ(registre.ErreurDuFichier(), ENOTDIR);
  EXPECT_EQ(registre.Entrées().size(), 1U);

  std::filesystem::remove(obstacle);
  std::filesystem::create_directory(obstacle);
  registre.AjouteErreur("écrite", {});
  EXPECT_EQ(registre.ErreurDuFichier(), 0);
  EXPECT_EQ(Lit(obstacle / "Erreur.txt"), "2024-05-03 14:03:22  écrite\n");
}

TEST(RegistreErreurs, SurvitAUnDisquePlein) {
  RegistreErreurs plein(Réglages("/dev/full"));
  plein.AjouteErreur("m", {});
  EXPECT_EQ(plein.NonEcrites(), 1U);
  EXPECT_EQ(plein.ErreurDuFichier(), ENOSPC);
  EXPECT_EQ(plein.Entrées().size(), 1U);
}

TEST(RegistreErreurs, ReprendLaLigneCoupéeParUnDisquePlein) {
  const DossierProvisoire dossier;
  const auto fichier = dossier.Chemin() / "Erreur.txt";
  RegistreErreurs registre(Réglages(fichier));
  rlimit avant{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &avant), 0);
  rlimit serré = avant;
  serré.rlim_cur = 30;  // in the middle of the entry
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &serré), 0);
  registre.AjouteErreur("une entrée trop longue", {});
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &avant), 0);
  EXPECT_EQ(registre.NonEcrites(), 1U);
  registre.AjouteErreur("entière", {});
  EXPECT_EQ(Lit(fichier), "2024-05-03 14:03:22  entière\n");
}

TEST(RegistreErreurs, BorneLeFichier) {
  const DossierProvisoire dossier;
  RéglagesRegistre réglages = Réglages(dossier.Chemin() / "Erreur.txt");
  réglages.tailleFichier = 100;
  RegistreErreurs registre(réglages);
  for (int i = 0; i < 50; ++i) registre.AjouteErreur("entrée " + std::to_string(i), {});
  registre.AjouteErreur("la dernière", {});
  const std::string deux = Lit(dossier.Chemin() / "Erreur.txt.1") + Lit(réglages.fichier);
  EXPECT_NE(deux.find("la dernière"), std::string::npos);
  EXPECT_NE(deux.find("entrée 49"), std::string::npos);
  EXPECT_LT(deux.size(), 300U);
}

TEST(RegistreErreurs, GardeLeMessageQuandLaMiseEnFormeEchoue) {
  const DossierProvisoire dossier;
  RéglagesRegistre réglages = Réglages(dossier.Chemin() / "Erreur.txt");
  réglages.instant = []() -> std::string { throw std::bad_alloc(); };
  RegistreErreurs registre(réglages);
  registre.AjouteErreur("nu", kVariables);
  EXPECT_EQ(Lit(réglages.fichier), "nu\n");
  EXPECT_EQ(registre.Total(), 1U);
}

}  // namespace
}  // namespace zuma::linux_
