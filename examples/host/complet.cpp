// The same frame by the object model itself, for hosts with a machine, a database and an order of
// their own: nothing here is hidden, and nothing is done for the host.
//     zuma init demo.db && ./complet demo.db
#include <cstdio>
#include <memory>
#include <zuma/base/poursuite.h>
#include <zuma/boards/table_des_drivers.h>
#include <zuma/core/chassis.h>
#include <zuma/platform/linux/arret_du_chassis.h>
#include <zuma/platform/linux/base_sqlite.h>
#include <zuma/platform/linux/parametres.h>
#include <zuma/platform/linux/registre_erreurs.h>
#include <zuma/platform/linux/securite.h>
#include <zuma/platform/linux/traducteur.h>
#include <zuma/sim/machine_simulee.h>

namespace {

// Messages of the library wait for nobody here; an operator's host shows a box.
struct Messages final : zuma::BoîteDeMessage {
  void Montre(std::string_view texte, const zuma::ObjetConcerné&) override {
    std::fprintf(stderr, "message: %.*s\n", static_cast<int>(texte.size()), texte.data());
  }
};

// Puts the outputs to rest by whatever way the block ends: `Décharge` alone leaves them on.
struct AuRepos {
  zuma::Chassis& chassis;
  ~AuRepos() {
    zuma::linux_::ArrêteLeChassis(chassis);
    zuma::Poursuite()([&] { chassis.Décharge(); });
  }
};

int Tourne(const std::string& fichier) {
  Messages messages;
  zuma::sim::MachineSimulée machine(messages, zuma::CréeLesDrivers());
  const auto registre = zuma::Crée<zuma::linux_::RegistreErreurs>(zuma::linux_::RéglagesRegistre{});
  const auto traducteur = zuma::Crée<zuma::linux_::Traducteur>();
  const auto sécurité = zuma::Crée<zuma::linux_::Securite>(machine.horloge);
  zuma::linux_::Parametres paramètres;

  zuma::Chassis chassis(machine.services);
  chassis.TimerExact(machine.horloge);
  chassis.ChargeErreur(registre);
  sécurité->Branche(chassis, registre);  // without it a pressed button leaves valve and pump on
  sécurité->Bornes(*traducteur);
  {
    const auto base = zuma::Crée<zuma::linux_::BaseSqlite>(fichier);
    const zuma::LecturesCohérentes lectures(base);  // others may write: all of it, or nothing
    chassis.ChargeLeChassis(base, 1);
    chassis.Lien(base, "1", sécurité, paramètres.Collection(), traducteur);
    chassis.MiseàJourDesLiens();
  }
  if (!registre->Entrées().empty()) {  // nothing was touched yet
    for (const auto& entrée : registre->Entrées()) std::puts(entrée.message.c_str());
    return 1;
  }
  machine.Branche(chassis);  // a twin for each board that the frame names
  const AuRepos repos{chassis};
  chassis.Initialise();
  for (double secondes = 0; secondes < 2; secondes += 0.001) {
    machine.AvanceJusquA(secondes);
    chassis.MetàJour();     // one pass: never waits
    sécurité->Maintient();  // a stop whose danger is gone goes on until it is acknowledged
  }
  for (const zuma::CapteurRef& capteur : *chassis.Capteurs()) {
    std::printf("%s = %g %s%s\n", capteur->Label().c_str(), capteur->ValeurCourante(),
                capteur->UnitéEtalonnage().c_str(), capteur->EstVieux() ? " (old)" : "");
  }
  return registre->Entrées().empty() && !sécurité->Déclenchée() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  return Tourne(argc > 1 ? argv[1] : "demo.db");
}
