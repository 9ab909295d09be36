// A host in thirty lines: presses a specimen of the demo frame to 50 kN on the simulated machine.
//     zuma init demo.db && ./minimal demo.db
#include <cstdio>
#include <exception>
#include <zuma/commands/commande.h>
#include <zuma/host/hote.h>
#include <zuma/logic/sortie_logique.h>
#include <zuma/sensors/capteur.h>

int main(int argc, char** argv) try {
  zuma::host::Hôte hôte({.fichier = argc > 1 ? argv[1] : "demo.db", .simulation = true});
  const zuma::Capteur& force = hôte.Capteur("Force");
  zuma::Commande& servovalve = hôte.Commande("Servovalve");
  hôte.QuandArrêt([](const std::string& cause) { std::printf("stopped: %s\n", cause.c_str()); });

  hôte.LeChassis().Watchdog()->Enabled(true);
  hôte.SortieLogique("Pompe").ValeurCourante(zuma::ENUM_ETAT_LOGIQUE::Actif);
  hôte.SortieLogique("Distributeur").ValeurCourante(zuma::ENUM_ETAT_LOGIQUE::Actif);
  hôte.Tourne({}, 2);  // seconds: pressure builds up
  servovalve.Enabled(true);
  servovalve.ValeurCouranteEnUnité(10);  // per cent
  const bool atteint = hôte.Tourne([&] { return force.ValeurCourante() < 50; }, 60);
  std::printf("%.1f %s after %.1f s\n", force.ValeurCourante(), force.UnitéEtalonnage().c_str(),
              hôte.Secondes());
  return atteint && !hôte.EstArrêté() ? 0 : 1;
} catch (const std::exception& échec) {  // the outputs are at rest by now
  std::fprintf(stderr, "%s\n", échec.what());
  return 2;
}
