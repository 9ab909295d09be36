#include "platform/linux/plateforme_linux.h"

#include <gtest/gtest.h>

#include "core/chassis.h"
#include "outils/dossier_passager.h"
#include "tree/journal_modbus.h"

namespace zuma::linux_ {
namespace {

TEST(PlateformeLinux, SertUnChassisSansRienDAutre) {
  const essai::DossierPassager dossier;
  PlateformeLinux machine({.dossier = dossier.chemin / "fichiers", .langue = "English"});
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

TEST(PlateformeLinux, UnDossierImpossibleSeLitDansLeRegistre) {
  const essai::DossierPassager dossier;
  std::ofstream(dossier.chemin / "obstacle") << "x";
  PlateformeLinux machine({.dossier = dossier.chemin / "obstacle"});
  EXPECT_EQ(machine.registre->Total(), 1U);
  EXPECT_THROW(PlateformeLinux({.dossier = dossier.chemin, .langue = "?"}), Echec);
}

}  // namespace
}  // namespace zuma::linux_
