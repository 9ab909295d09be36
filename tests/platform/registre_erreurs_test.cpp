#include "platform/linux/registre_erreurs.h"

#include <new>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "outils/dossier_provisoire.h"

namespace zuma::linux_ {
namespace {

using essai::Lit;

const TableVariables kVariables{{Nul{}, Nul{}},
                                {"Variable musrEtat", 3},
                                {"Variable mdblTemps", 1.5},
                                {"Variable mstrNom", "Force\nfausse ligne"},
                                {Nul{}, Nul{}},
                                {"Variable vData", Nul{}}};

class UnRegistre : public testing::Test {
 protected:
  const essai::DossierProvisoire dossier;
  RéglagesRegistre réglages{.fichier = dossier.Chemin() / "à créer" / "Erreur.txt",
                            .instant = [] { return std::string("2024-05-03 14:03:22"); }};
};

TEST_F(UnRegistre, EcritUneEntréeLisibleEtGardeLesDernières) {
  réglages.entrées = 3;
  RegistreErreurs registre(réglages);
  registre.AjouteErreur("Erreur N°91 (Objet absent).", kVariables);
  registre.AjouteErreur("suivante", TableVariables(1));
  EXPECT_EQ(Lit(réglages.fichier),
            "2024-05-03 14:03:22  Erreur N°91 (Objet absent).\n"
            "    Variable musrEtat = 3\n"
            "    Variable mdblTemps = 1,5\n"
            "    Variable mstrNom = \"Force fausse ligne\"\n"
            "    Variable vData = Null\n"
            "2024-05-03 14:03:22  suivante\n");
  EXPECT_EQ(registre.Entrées()[0].variables, kVariables);
  for (int i = 0; i < 8; ++i) registre.AjouteErreur(std::to_string(i), {});
  ASSERT_EQ(registre.Entrées().size(), 3U);
  EXPECT_EQ(registre.Entrées().front().message + registre.Entrées().back().message, "57");
  EXPECT_EQ(registre.Total(), 10U);
  EXPECT_EQ(registre.NonEcrites(), 0U);
}

TEST_F(UnRegistre, SurvitAUnFichierImpossibleEtRevient) {
  const auto obstacle = réglages.fichier.parent_path();
  std::ofstream(obstacle) << "un fichier, pas un dossier";
  RegistreErreurs registre(réglages);
  registre.AjouteErreur("perdue pour le fichier", {});
  EXPECT_EQ(registre.NonEcrites(), 1U);
  EXPECT_EQ(registre.ErreurDuFichier(), ENOTDIR);
  EXPECT_EQ(registre.Entrées().size(), 1U);
  std::filesystem::remove(obstacle);
  std::filesystem::create_directory(obstacle);
  registre.AjouteErreur("écrite", {});
  EXPECT_EQ(registre.ErreurDuFichier(), 0);
  EXPECT_EQ(Lit(réglages.fichier), "2024-05-03 14:03:22  écrite\n");
}

TEST_F(UnRegistre, SurvitAUnDisquePleinEtReprendLaLigneCoupée) {
  RegistreErreurs registre(réglages);
  rlimit avant{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &avant), 0);
  const rlimit serré{30, avant.rlim_max};  // in the middle of the entry
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &serré), 0);
  registre.AjouteErreur("une entrée trop longue", {});
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &avant), 0);
  EXPECT_EQ(registre.NonEcrites(), 1U);
  EXPECT_EQ(registre.ErreurDuFichier(), ENOSPC);
  registre.AjouteErreur("entière", {});
  EXPECT_EQ(Lit(réglages.fichier), "2024-05-03 14:03:22  entière\n");
}

TEST_F(UnRegistre, BorneLeFichier) {
  réglages.tailleFichier = 100;
  RegistreErreurs registre(réglages);
  for (int i = 0; i < 50; ++i) registre.AjouteErreur("entrée " + std::to_string(i), {});
  const std::string deux = Lit(réglages.fichier.string() + ".1") + Lit(réglages.fichier);
  EXPECT_TRUE(deux.ends_with("entrée 48\n2024-05-03 14:03:22  entrée 49\n")) << deux;
  EXPECT_LT(deux.size(), 300U);
}

TEST_F(UnRegistre, GardeLeMessageQuandLaMiseEnFormeEchoue) {
  réglages.instant = []() -> std::string { throw std::bad_alloc(); };
  RegistreErreurs registre(réglages);
  registre.AjouteErreur("nu", kVariables);
  EXPECT_EQ(Lit(réglages.fichier), "nu\n");
  EXPECT_EQ(registre.Total(), 1U);
}

}  // namespace
}  // namespace zuma::linux_
