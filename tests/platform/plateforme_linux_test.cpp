#include "platform/linux/plateforme_linux.h"

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/dossier_provisoire.h"
#include "tree/journal_modbus.h"

namespace zuma::linux_ {
namespace {

RéglagesLinux Choix(const std::filesystem::path& dossier, const char* langue = "") {
  RéglagesLinux choix;
  choix.dossier = dossier;
  choix.langue = langue;
  return choix;
}

TEST(PlateformeLinux, SertUnChassisSansRienDAutre) {
  const essai::DossierProvisoire dossier;
  PlateformeLinux machine(Choix(dossier.Chemin() / "fichiers", "English"));
  Chassis chassis(machine.services);
  chassis.TimerExact(machine.timer);
  chassis.ChargeErreur(machine.registre);
  machine.securite->Branche(chassis, machine.registre);
  chassis.MetàJour();
  EXPECT_EQ(machine.registre->Total(), 0U);
  EXPECT_EQ(machine.traducteur->LangueCourante(), "English");
  // The journal of the drives has its folder from the start.
  machine.services.fichiers->AjouteLigne(kJournalModbus, "ligne");

  machine.securite->PositionneCauseAU("porte");
  (void)machine.securite->DéclencheSécurité();
  EXPECT_TRUE(machine.securite->ArrêtComplet());
}

TEST(PlateformeLinuxDeathTest, LaFinLaisseSaRaison) {
  const essai::DossierProvisoire dossier;
  RéglagesLinux choix = Choix(dossier.Chemin() / "fichiers");
  choix.registre.fichier = dossier.Chemin() / "Erreur.txt";
  EXPECT_EXIT(
      {
        PlateformeLinux machine(choix);
        machine.services.fin->ArrêteLeProgramme("liaison perdue");
      },
      testing::ExitedWithCode(EXIT_FAILURE), "liaison perdue");
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "liaison perdue", essai::Lit(choix.registre.fichier));
}

TEST(PlateformeLinux, DitUneFoisChaqueBibliothèqueQuIlNAPas) {
  const essai::DossierProvisoire dossier;
  PlateformeLinux machine(Choix(dossier.Chemin() / "fichiers"));
  std::int32_t nombre = 5;
  EXPECT_NE(machine.services.orbit->OrbitSetaddr(0, 1, "A0"), 0);
  EXPECT_NE(machine.services.spider->S8_GetDevSettings(1, nombre), 0);
  EXPECT_EQ(nombre, 0);
  EXPECT_LT(machine.services.pci->Register_Card(BibliothèquePCI::kType9111, 0), 0);
  EXPECT_LT(machine.services.pci->Register_Card(BibliothèquePCI::kType6208V, 0), 0);
  EXPECT_EQ(machine.registre->Total(), 3U);
}

TEST(PlateformeLinux, UnDossierImpossibleSeLitDansLeRegistre) {
  const essai::DossierProvisoire dossier;
  std::ofstream(dossier.Chemin() / "obstacle") << "x";
  PlateformeLinux machine(Choix(dossier.Chemin() / "obstacle"));
  EXPECT_EQ(machine.registre->Total(), 1U);
  EXPECT_THROW(PlateformeLinux(Choix(dossier.Chemin(), "?")), Echec);
}

}  // namespace
}  // namespace zuma::linux_
