#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "host/configuration.h"
#include "host/verbes.h"

namespace {

using namespace zuma::host;

// The file and frame that every verb on a frame takes.
template <class Options>
void AjouteChassis(CLI::App& verbe, Options& options) {
  verbe.add_option("FILE", options.fichier, "configuration database")
      ->required()
      ->check(CLI::ExistingFile);
  verbe.add_option("--frame", options.chassis, "index of the frame in table Chassis")
      ->capture_default_str();
  verbe.add_flag("--json", options.json, "print data for other programs");
  verbe.add_option("--param", options.paramètres, "shared parameter, INDEX=VALUE")
      ->type_name("INDEX=VALUE");
}

// The devices of a real machine.
template <class Options>
void AjouteRaccordement(CLI::App& verbe, Options& options) {
  verbe.add_option("--port", options.ports, "device of a serial port of the configuration")
      ->type_name("N=DEVICE");
  verbe.add_option("--can", options.can, "network interface of a port of a CAN card")
      ->type_name("CARD:PORT=INTERFACE");
}

int Lance(int argc, char** argv) {
  CLI::App app{"zuma drives a materials-testing frame described by a configuration database."};
  app.require_subcommand(0, 1);  // none is told below: here it would hide a misspelt one
  app.set_version_flag("--version", ZUMA_VERSION);
  app.footer("Exit code: 0 good, 1 problems found, 2 misuse.");

  OptionsInit init;
  auto* verbeInit = app.add_subcommand("init", "write a database with the schema and a demo frame");
  verbeInit->add_option("FILE", init.fichier, "database to write; must not exist")->required();

  OptionsCheck check;
  auto* verbeCheck = app.add_subcommand("check", "load and link a frame, tell every problem");
  AjouteChassis(*verbeCheck, check);

  OptionsRun run;
  auto* verbeRun = app.add_subcommand("run", "run a frame and show its channels live");
  AjouteChassis(*verbeRun, run);
  verbeRun->add_flag("--sim", run.simulation, "put the whole frame on the simulated machine");
  verbeRun->add_option("--seconds", run.secondes, "end after that many seconds")
      ->check(CLI::PositiveNumber);
  verbeRun->add_option("--csv", run.csv, "record the sensors on each refresh");
  verbeRun
      ->add_option(
          "--fault", run.pannes,
          "disturb the simulated machine: silence, garbage, crc, cut, babble or unplug, on "
          "all lines or on :PORT, :can, :usb, @FROM-TO seconds")
      ->type_name("KIND[:WHERE][@FROM[-TO]]");
  verbeRun->add_flag("--fast", run.auPlusVite, "let simulated time run as fast as it goes");
  AjouteRaccordement(*verbeRun, run);
  verbeRun->footer(
      "Keys: j k choose a sensor, t tare, c cancel tare, z zero, m reset extremes, "
      "s stop, a acknowledge, f next fault (simulated machine), q quit.");

  OptionsDump dump;
  auto* verbeDump = app.add_subcommand("dump", "run a frame shortly and write its whole tree");
  AjouteChassis(*verbeDump, dump);
  verbeDump->add_flag("--sim", dump.simulation, "put the whole frame on the simulated machine");
  verbeDump->add_option("--seconds", dump.secondes, "let it run that long before the dump")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  verbeDump->add_option("--out", dump.sortie, "text file to append to, instead of the output")
      ->excludes("--json");
  AjouteRaccordement(*verbeDump, dump);

  OptionsCompression compression;
  auto* verbeCompression = app.add_subcommand(
      "compression", "run a compression test on the simulated press, up to the break");
  verbeCompression->add_option("FILE", compression.fichier, "demo database")
      ->required()
      ->check(CLI::ExistingFile);
  verbeCompression->add_option("--frame", compression.chassis, "index of the frame")
      ->capture_default_str();
  verbeCompression->add_option("--out", compression.dossier, "folder for recording and curve")
      ->capture_default_str();
  verbeCompression->add_option("--rate", compression.vitesse, "stress rate in MPa/s")
      ->check(CLI::Range(0.05, 5.0))
      ->capture_default_str();
  verbeCompression->add_option("--fault", compression.panne, "what goes wrong during the load")
      ->check(CLI::IsMember({"door", "button", "overrange", "freeze"}));
  verbeCompression->add_flag("--json", compression.json, "print the report for other programs");

  OptionsSim sim;
  auto* verbeSim =
      app.add_subcommand("sim", "serve the simulated serial instruments on pseudo-terminals");
  verbeSim->add_option("--seconds", sim.secondes, "end after that many seconds")
      ->check(CLI::PositiveNumber);
  verbeSim->add_flag("--json", sim.json, "print the ports for other programs");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? kBon : kMauvaisUsage;
  }
  if (app.get_subcommands().empty()) {
    std::fprintf(stderr, "zuma: a command is required\n%s", app.help().c_str());
    return kMauvaisUsage;
  }
  if (verbeInit->parsed()) return Init(init);
  if (verbeCheck->parsed()) return Check(check);
  if (verbeDump->parsed()) return Dump(dump);
  if (verbeCompression->parsed()) return Compression(compression);
  if (verbeSim->parsed()) return Sim(sim);
  return Run(run);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Lance(argc, argv);
  } catch (const MauvaisUsage& e) {
    std::fprintf(stderr, "zuma: %s\n", e.what());
    return kMauvaisUsage;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "zuma: %s\n", e.what());
    return kProblèmes;
  }
}
