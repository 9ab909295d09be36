#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "host/session.h"
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
