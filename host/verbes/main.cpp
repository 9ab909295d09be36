#include <csignal>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "host/configuration.h"
#include "host/depart.h"
#ifdef ZUMA_QT
#include "host/desktop/desktop.h"
#endif
#include "host/verbes/verbes.h"

namespace {

// Tells the refusal, as data on the output if wanted so. Returns the exit code.
int DitLeRefus(const zuma::host::DépartRefusé& refus, bool json) {
  if (json)
    std::printf("{\"refused\":%s}\n",
                zuma::host::EnJson(refus.Problèmes(), zuma::host::kUneLigne).c_str());
  std::fprintf(stderr, "zuma: %s\n", refus.what());
  return zuma::host::kProblèmes;
}

using namespace zuma::host;

// The file and frame that every verb on a frame takes.
template <class Options>
void AjouteChassis(CLI::App& verbe, Options& options) {
  verbe.add_option("FILE", options.fichier, "configuration database")
      ->required()
      ->check(CLI::ExistingFile);
  verbe.add_option("--frame", options.chassis, "index of the frame in table Chassis")
      ->capture_default_str();
  verbe.add_option("--param", options.paramètres, "shared parameter, INDEX=VALUE")
      ->type_name("INDEX=VALUE");
  verbe.add_option("--driver", options.drivers, "library of drivers beside those of zuma")
      ->type_name("LIBRARY")
      ->allow_extra_args(false);
}

template <class Options>
void AjouteJson(CLI::App& verbe, Options& options) {
  verbe.add_flag("--json", options.json, "print data for other programs");
}

// The devices of a real machine.
template <class Options>
void AjouteLesPorts(CLI::App& verbe, Options& options) {
  verbe.add_option("--port", options.ports, "device of a serial port of the configuration")
      ->type_name("N=DEVICE");
  verbe.add_option("--can", options.can, "network interface of a port of a CAN card")
      ->type_name("CARD:PORT=INTERFACE");
}

template <class Options>
void AjouteMalgréTout(CLI::App& verbe, Options& options) {
  verbe.add_flag("--start-anyway", options.malgréTout,
                 "start although load, link or start left entries: what failed is missing, limits "
                 "and stops included");
}

// Which frame, and which of its objects, the verbs look at.
template <class Options>
void AjouteRegard(CLI::App& verbe, Options& options) {
  verbe.add_option("NAME", options.noms, "labels or names; \"sensor:NAME\" for one kind alone");
  verbe.add_option("--of", options.où, "published file, or database; without: the one that runs")
      ->type_name("FILE");
  verbe.add_option("--frame", options.chassis, "index of the frame of a database");
  AjouteJson(verbe, options);
}

// Windows are a program of their own, so that a machine without a screen needs no toolkit: zuma
// hands its command line on to the one beside it.
[[maybe_unused]] char** arguments = nullptr;

int LanceDesktop([[maybe_unused]] const OptionsDesktop& options) {
  if (options.fichier.empty() && !options.attache) throw MauvaisUsage("FILE is required");
#ifdef ZUMA_QT
  return Desktop(options);
#else
  const std::string voisin =
      std::filesystem::read_symlink("/proc/self/exe").replace_filename("zuma-desktop");
  execv(voisin.c_str(), arguments);
  throw MauvaisUsage("the window is a program of its own, and " + voisin +
                     " is not there: install package zuma-desktop, or build with -DZUMA_QT=ON "
                     "(qt6-base-dev, qt6-charts-dev, libqt6opengl6-dev)");
#endif
}

template <class Options>
void AjouteSimulation(CLI::App& verbe, Options& options) {
  verbe.add_flag("--sim", options.simulation, "put the whole frame on the simulated machine");
  AjouteLesPorts(verbe, options);
  AjouteMalgréTout(verbe, options);
}

/// The command line: options of all verbs, and the exit code of the one that ran.
class LigneDeCommande {
 public:
  LigneDeCommande() {
    app_.require_subcommand(0, 1);  // none is told below: here it would hide a misspelt one
    app_.set_version_flag("--version", ZUMA_VERSION);
    app_.footer("Exit code: 0 good, 1 problems found, 2 misuse.");
    AjouteInit();
    AjouteCheck();
    AjouteRun();
    AjouteDump();
    AjouteDesktop();
    AjouteCompression();
    AjouteSim();
    AjouteListe();
    AjouteShow();
    AjouteWatch();
    AjouteScope();
    AjouteRecord();
    AjouteBlackbox();
    AjouteDiff();
    AjouteConvert();
  }

  int Lance(int argc, char** argv) {
    try {
      app_.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
      return app_.exit(e) == 0 ? kBon : kMauvaisUsage;
    }
    if (app_.get_subcommands().empty()) {
      std::fprintf(stderr, "zuma: a command is required\n%s", app_.help().c_str());
      return kMauvaisUsage;
    }
    return code_;
  }

 private:
  // A verb that runs once its options are read.
  template <class Options>
  CLI::App& Verbe(const char* nom, const char* aide, Options& options,
                  int (*lance)(const Options&)) {
    CLI::App& verbe = *app_.add_subcommand(nom, aide);
    verbe.callback([this, &options, lance] { code_ = Code(options, lance); });
    return verbe;
  }

  template <class Options>
  static int Code(const Options& options, int (*lance)(const Options&)) {
    try {
      return lance(options);
    } catch (const DépartRefusé& refus) {
      bool json = false;
      if constexpr (requires { options.json; }) json = options.json;
      return DitLeRefus(refus, json);
    }
  }

  void AjouteInit() {
    CLI::App& verbe =
        Verbe("init", "write a database with the schema and demo frames", init_, &Init);
    verbe.add_option("FILE", init_.fichier, "database to write; must not exist")->required();
  }

  void AjouteCheck() {
    CLI::App& verbe = Verbe("check", "load and link a frame, tell every problem", check_, &Check);
    AjouteChassis(verbe, check_);
    AjouteJson(verbe, check_);
  }

  void AjouteRun() {
    CLI::App& verbe = Verbe("run", "run a frame and show its channels live", run_, &Run);
    AjouteChassis(verbe, run_);
    AjouteJson(verbe, run_);
    AjouteSimulation(verbe, run_);
    verbe.add_option("--seconds", run_.secondes, "end after that many seconds")
        ->check(CLI::PositiveNumber);
    verbe.add_flag("--lines", run_.lignes, "print a line for each sensor and channel")
        ->excludes("--json");
    verbe.add_option("--stops", run_.arrêts, "folder that keeps each stop [stops beside FILE]");
    CLI::Option* csv =
        verbe.add_option("--csv", run_.csv, "record the sensors on each refresh in a new file");
    verbe
        .add_flag("--ages", run_.âges, "with --csv: each reading is followed by its age in seconds")
        ->needs(csv);
    verbe
        .add_flag("--channels", run_.canaux,
                  "with --csv: clock and channels too, so that the recording can be played again")
        ->needs(csv);
    verbe
        .add_option("--replay", run_.rejoue,
                    "a recording with channels instead of the machine: its test on today's "
                    "calibration")
        ->check(CLI::ExistingFile)
        ->excludes("--sim");
    verbe
        .add_option("--fault", run_.pannes,
                    "disturb the simulated machine: silence, deaf, garbage, crc, cut, lose, add, "
                    "flip, babble, unplug, late, stuck, on all lines or on :PORT, :can, :usb; "
                    "bounce, hang, dead, on all boards or on :0xBASE; running; clock:SECONDS; "
                    "random; @FROM-TO seconds, else from before the start")
        ->type_name("KIND[:WHERE][@FROM[-TO]]");
    verbe.add_option("--seed", run_.graine,
                     "seed of the luck of the faults: the same, the same run");
    verbe.add_flag("--fast", run_.auPlusVite, "let simulated time run as fast as it goes");
    verbe.footer(
        "Keys: j k choose a sensor, t tare, c cancel tare, z zero, m reset extremes, "
        "s stop, a acknowledge, f next fault (simulated machine), space and b scroll, q quit. "
        "Without a terminal: a summary line a second.");
  }

  void AjouteDump() {
    CLI::App& verbe = Verbe("dump", "run a frame shortly and write its whole tree", dump_, &Dump);
    AjouteChassis(verbe, dump_);
    AjouteJson(verbe, dump_);
    AjouteSimulation(verbe, dump_);
    verbe.add_option("--seconds", dump_.secondes, "let it run that long before the dump")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    verbe.add_option("--out", dump_.sortie, "text file to append to, instead of the output")
        ->excludes("--json");
  }

  void AjouteDesktop() {
    CLI::App& verbe = Verbe("desktop", "run a frame in a desktop window", desktop_, &LanceDesktop);
    AjouteChassis(verbe, desktop_);
    verbe.get_option("FILE")->required(false);
    verbe.add_flag("--attach", desktop_.attache,
                   "look at a frame that another program runs: FILE is its database or published "
                   "file, and nothing can be operated");
    AjouteSimulation(verbe, desktop_);
    verbe.add_option("--lang", desktop_.langue,
                     "language of the window, by the beginning of its name");
    verbe.add_option("--person", desktop_.personne,
                     "who calibrates: name and date are written with each new table");
    verbe.add_option("--stops", desktop_.arrêts, "folder that keeps each stop [stops beside FILE]");
    // For the pictures of the documentation.
    verbe.add_option("--picture", desktop_.image)->group("");
    verbe.add_option("--after", desktop_.après)->check(CLI::PositiveNumber)->group("");
    verbe.add_flag("--test", desktop_.essai)->group("");
    verbe.add_option("--tab", desktop_.onglet)->group("");
  }

  void AjouteCompression() {
    CLI::App& verbe =
        Verbe("compression", "run a compression test on the simulated press, up to the break",
              compression_, &Compression);
    verbe.add_option("FILE", compression_.fichier, "demo database")
        ->required()
        ->check(CLI::ExistingFile);
    verbe.add_option("--frame", compression_.chassis, "index of the frame")->capture_default_str();
    verbe.add_option("--out", compression_.dossier, "folder for recording and curve")
        ->capture_default_str();
    verbe.add_option("--rate", compression_.vitesse, "stress rate in MPa/s")
        ->check(CLI::Range(0.05, 5.0))
        ->capture_default_str();
    verbe.add_option("--fault", compression_.panne, "what goes wrong during the load")
        ->check(CLI::IsMember({"door", "button", "overrange", "freeze", "cell"}));
    AjouteJson(verbe, compression_);
    AjouteMalgréTout(verbe, compression_);
  }

  void AjouteSim() {
    CLI::App& verbe =
        Verbe("sim", "serve the simulated serial instruments on pseudo-terminals", sim_, &Sim);
    verbe.add_option("--seconds", sim_.secondes, "end after that many seconds")
        ->check(CLI::PositiveNumber);
    AjouteJson(verbe, sim_);
  }

  void AjouteListe() {
    CLI::App& verbe = Verbe("list", "frames that run on this machine", liste_, &Liste);
    AjouteJson(verbe, liste_);
    verbe.add_flag("--names", liste_.noms)->group("");  // for the completion of a shell
  }

  void AjouteShow() {
    CLI::App& verbe = Verbe("show", "objects of a frame that runs, as they are", show_, &Show);
    AjouteRegard(verbe, show_);
  }

  void AjouteWatch() {
    CLI::App& verbe =
        Verbe("watch", "objects of a frame that runs, as they change", watch_, &Watch);
    AjouteRegard(verbe, watch_);
    verbe.add_option("--rate", watch_.cadence, "looks a second")
        ->check(CLI::Range(0.1, 100.0))
        ->capture_default_str();
    verbe.add_option("--seconds", watch_.secondes, "end after that many seconds")
        ->check(CLI::PositiveNumber);
  }

  void AjouteScope() {
    CLI::App& verbe = Verbe("scope", "curves of a frame that runs", scope_, &Scope);
    AjouteRegard(verbe, scope_);
    verbe.add_option("--seconds", scope_.secondes, "of the picture")
        ->check(CLI::Range(0.01, 60.0))
        ->capture_default_str();
    verbe
        .add_option("--trigger", scope_.déclencheur,
                    "wait until the condition comes true: > >= < <= = != and a number, on or off")
        ->expected(3)
        ->type_name("NAME OP VALUE");
    verbe.add_option("--wait", scope_.attente, "seconds for the trigger at most")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    verbe.add_option("--svg", scope_.svg, "write a picture in a new file");
  }

  void AjouteRecord() {
    CLI::App& verbe =
        Verbe("record", "record a frame that runs in a new CSV file", record_, &Record);
    AjouteRegard(verbe, record_);
    verbe.add_option("--out", record_.fichier, "file to make")->required();
    verbe.add_flag("--ages", record_.âges, "each reading is followed by its age in seconds");
    verbe.add_option("--seconds", record_.secondes, "end after that many seconds")
        ->check(CLI::PositiveNumber);
  }

  void AjouteBlackbox() {
    CLI::App& verbe =
        Verbe("blackbox", "what the last minute of a frame was, its host dead or alive", boîte_,
              &Blackbox);
    verbe.add_option("FILE", boîte_.où, "published file, or database");
    verbe.add_option("--frame", boîte_.chassis, "index of the frame of a database");
    verbe.add_option("--svg", boîte_.svg, "write the page of the last stop in a new file");
    AjouteJson(verbe, boîte_);
  }

  void AjouteDiff() {
    CLI::App& verbe = Verbe("diff", "what differs between two frames or black boxes", diff_, &Diff);
    verbe.add_option("ONE", diff_.un, "published file, or database")->required();
    verbe.add_option("OTHER", diff_.autre, "published file, or database")->required();
    AjouteJson(verbe, diff_);
  }

  void AjouteConvert() {
    CLI::App& verbe = Verbe("convert", "a finished recording in another form", convert_, &Convert);
    verbe.add_option("FILE", convert_.fichier, "recording, as run --csv and record write it")
        ->required()
        ->check(CLI::ExistingFile);
    verbe
        .add_option("--to", convert_.forme,
                    "hdf5: FILE with the ending .h5, a data set a column; csvw: "
                    "FILE-metadata.json, what the columns are")
        ->check(CLI::IsMember({"hdf5", "csvw"}))
        ->capture_default_str();
  }

  CLI::App app_{"zuma drives a materials-testing frame described by a configuration database."};
  int code_ = kMauvaisUsage;
  OptionsInit init_;
  OptionsCheck check_;
  OptionsRun run_;
  OptionsDump dump_;
  OptionsDesktop desktop_;
  OptionsCompression compression_;
  OptionsSim sim_;
  OptionsListe liste_;
  OptionsRegard show_;
  OptionsWatch watch_;
  OptionsScope scope_;
  OptionsRecord record_;
  OptionsBoîte boîte_;
  OptionsDiff diff_;
  OptionsConvert convert_;
};

}  // namespace

int main(int argc, char** argv) {
  arguments = argv;
  // A file at the size limit of the process, the database included, is a write that fails, and no
  // reason to leave a machine under its last set point.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return LigneDeCommande().Lance(argc, argv);
  } catch (const MauvaisUsage& e) {
    std::fprintf(stderr, "zuma: %s\n", e.what());
    return kMauvaisUsage;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "zuma: %s\n", e.what());
    return kProblèmes;
  }
}
