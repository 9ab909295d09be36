// The driver at work on its twin: what stands at a terminal is what the channel reads, and a board
// that is pulled or hangs is told. Its rows stand in this program; `zuma` loads them as a library.
//     ./essai_ma_carte ma_base.db
#include <cmath>
#include <cstdio>
#include <memory>
#include <zuma/host/chassis_en_marche.h>
#include <zuma/host/drivers_charges.h>
#include <zuma/host/hote.h>
#include <zuma/host/machine.h>
#include <zuma/sim/machine_simulee.h>

namespace {

int fautes = 0;

void Exige(bool juste, const char* quoi, double trouvé) {
  if (juste) return;
  ++fautes;
  std::printf("%s: found %g\n", quoi, trouvé);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const auto recueil = zuma::Crée<zuma::host::Recueil>();
  const auto machine = zuma::host::MachineSimulée(
      *recueil, zuma::host::Cadence::Libre,
      zuma::host::LesDrivers({}, {zuma_drivers.lignes, zuma_drivers.nombre}));
  zuma::sim::MachineSimulée& jumelle = *machine->Jumelle();
  zuma::host::ChassisEnMarche marche(argv[1], 50, *machine, recueil, {});
  const auto bloc = *(*marche.LeChassis().Cartes()->begin())->Fonctions()->begin();
  double secondes = 0;
  const auto lit = [&](zuma::Canal& canal, double volts) {
    secondes = machine->AvanceJusquA(secondes + 0.02);  // a refresh is due each 0.01 s
    jumelle.BorneDe(canal).value().TensionEntrée(volts);
    marche.Passe();
    return canal.ValeurCanal();
  };

  constexpr double kUnCode = 65536 / 4096.0;
  for (const double volts : {0.0, 2.5, 9.99, 12.0}) {
    for (const zuma::CanalRef& canal : *bloc->Canals()) {
      const double points = lit(*canal, volts);
      Exige(std::fabs(points - std::fmin(volts * 6553.6, 65536 - kUnCode)) <= kUnCode,
            canal->Nom().c_str(), points);
    }
  }
  Exige(recueil->Problèmes().empty(), "entries of a board that is well",
        double(recueil->Problèmes().size()));

  zuma::Canal& canal = **bloc->Canals()->begin();
  for (const auto genre : {zuma::sim::GenreDePanne::Blocage, zuma::sim::GenreDePanne::Mort}) {
    const double avant = lit(canal, 5);
    jumelle.pannes = {
        {.genre = genre, .lieu = zuma::sim::LieuDePanne::Carte, .port = 0x340, .fin = 1e9}};
    Exige(lit(canal, 8) == avant, "a board that does not answer keeps its value",
          canal.ValeurCanal());
    Exige(canal.Age() > 0, "age of a reading that is not of now", canal.Age());
    Exige(!recueil->Problèmes().empty(), "entries of a board that does not answer", 0);
    jumelle.pannes.clear();
  }
  std::printf("%s\n", fautes == 0 ? "all is well" : "FAILED");
  return fautes == 0 ? 0 : 1;
}
