#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The verbs of the program, each with its options. A verb returns the exit code; one that runs a
// frame throws `DépartRefusé` when it must not start.
namespace zuma::host {

inline constexpr int kBon = 0;
inline constexpr int kProblèmes = 1;
inline constexpr int kMauvaisUsage = 2;

struct OptionsInit {
  std::string fichier;
};
/// Writes a new database with the schema and the demo frame; never overwrites a file.
int Init(const OptionsInit& options);

struct OptionsCheck {
  std::string fichier;
  std::int32_t chassis = 1;
  bool json = false;
  std::vector<std::string> paramètres;  ///< "index=value"
  std::vector<std::string> drivers;     ///< libraries of drivers
};
/// Loads and links the frame and tells every problem with the object it concerns.
int Check(const OptionsCheck& options);

struct OptionsRun {
  std::string fichier;
  std::int32_t chassis = 1;
  bool simulation = false;
  bool malgréTout = false;  ///< start although the load or the start left entries
  std::optional<double> secondes;
  bool json = false;
  bool lignes = false;              ///< one line for each sensor and channel, for other programs
  std::string csv;                  ///< recording of the sensors; empty for none
  std::string arrêts;               ///< folder that keeps the stops; empty: beside the database
  bool âges = false;                ///< the recording tells how old each reading is
  bool canaux = false;              ///< the recording can be played again
  std::string rejoue;               ///< recording in the place of the machine; empty for none
  std::uint32_t graine = 0;         ///< of the luck of the faults
  std::vector<std::string> pannes;  ///< faults of the simulated machine, see host/pannes.h
  bool auPlusVite = false;          ///< simulated time runs as fast as it goes
  std::vector<std::string> ports;   ///< "number=device" of serial ports
  std::vector<std::string> can;     ///< "card:port=interface" of CAN ports
  std::vector<std::string> paramètres;  ///< "index=value"
  std::vector<std::string> drivers;     ///< libraries of drivers
};
/// Runs the frame and shows its boards, blocks and channels until Ctrl-C or the given time.
int Run(const OptionsRun& options);

struct OptionsDump {
  std::string fichier;
  std::int32_t chassis = 1;
  bool simulation = false;
  bool malgréTout = false;  ///< start although the load or the start left entries
  double secondes = 1;      ///< passes before the dump, so that its values are live
  std::string sortie;       ///< file to append to; empty for the standard output
  bool json = false;
  std::vector<std::string> ports;       ///< "number=device" of serial ports
  std::vector<std::string> can;         ///< "card:port=interface" of CAN ports
  std::vector<std::string> paramètres;  ///< "index=value"
  std::vector<std::string> drivers;     ///< libraries of drivers
};
/// Starts the frame, lets it pass for a while, writes the dump of its whole tree and puts it to
/// rest. Simulated time runs as fast as it goes.
int Dump(const OptionsDump& options);

struct OptionsDesktop {
  std::string fichier;
  std::int32_t chassis = 1;
  bool simulation = false;
  bool malgréTout = false;              ///< start although the load or the start left entries
  std::vector<std::string> ports;       ///< "number=device" of serial ports
  std::vector<std::string> can;         ///< "card:port=interface" of CAN ports
  std::vector<std::string> paramètres;  ///< "index=value"
  std::vector<std::string> drivers;     ///< libraries of drivers
  std::string personne;                 ///< who calibrates; empty leaves date and person alone
  std::string langue;                   ///< of the window; empty for the first known
  std::string image;                    ///< picture of the window to write, then the end
  double après = 5;                     ///< seconds until that picture
  bool attache = false;                 ///< look at a frame that another program runs
  bool essai = false;                   ///< begin the compression test at once
  std::string arrêts;                   ///< folder that keeps the stops; empty: beside the database
  int onglet = 0;                       ///< pane below the sensors: 0 curves, 1 test
};

struct OptionsCompression {
  std::string fichier;
  std::int32_t chassis = 1;
  std::string dossier = "compression";  ///< where the files go
  double vitesse = 0.6;                 ///< MPa/s
  double limite = 120;                  ///< seconds of load at most
  std::string panne;  ///< "door", "button", "overrange", "freeze", "cell"; empty for none
  bool json = false;
  bool malgréTout = false;  ///< start although the load or the start left entries
};
/// Runs a compression test on the simulated press through the object model alone, and writes its
/// recording and its curve.
int Compression(const OptionsCompression& options);

struct OptionsSim {
  std::optional<double> secondes;
  bool json = false;
};
/// Serves every simulated serial instrument on a pseudo-terminal of its own, so that real adapters
/// and other programs can talk to them, until Ctrl-C or the given time.
int Sim(const OptionsSim& options);

/// What the verbs that only look have in common.
struct OptionsRegard {
  std::string où;  ///< file of a publication, or database; empty: the one that runs
  std::optional<std::int32_t> chassis;  ///< of a database with several frames
  std::vector<std::string> noms;        ///< of objects; empty for those that one looks at first
  bool json = false;
};

struct OptionsListe {
  bool json = false;
  bool noms = false;  ///< names of the objects alone, one a line, for the completion of a shell
};
/// The frames that run on this machine, and what dead hosts left.
int Liste(const OptionsListe& options);

/// The objects as they are now.
int Show(const OptionsRegard& options);

struct OptionsWatch : OptionsRegard {
  double cadence = 5;              ///< looks a second
  std::optional<double> secondes;  ///< end after that many
};
/// The objects as they change, until Ctrl-C, the given time or the end of the host.
int Watch(const OptionsWatch& options);

struct OptionsScope : OptionsRegard {
  double secondes = 5;                   ///< of the picture
  std::vector<std::string> déclencheur;  ///< name, operator, value; empty for none
  double attente = 60;                   ///< seconds for the trigger at most
  std::string svg;                       ///< picture to write; empty for the terminal
};
/// Curves of the objects; with a trigger from a fifth of the picture before it.
int Scope(const OptionsScope& options);

struct OptionsRecord : OptionsRegard {
  std::string fichier;
  bool âges = false;
  std::optional<double> secondes;
};
/// Records objects of a frame that another program runs.
int Record(const OptionsRecord& options);

struct OptionsBoîte : OptionsRegard {
  std::string svg;  ///< page of the last stop to write
};
/// What a black box tells: last sample, outputs as they were last written, events, stops in words.
int Blackbox(const OptionsBoîte& options);

struct OptionsConvert {
  std::string fichier;         ///< a recording
  std::string forme = "hdf5";  ///< or "csvw"
};
/// Writes a finished recording beside itself in another form.
int Convert(const OptionsConvert& options);

struct OptionsDiff {
  std::string un, autre;  ///< publications, or databases of frames that are published
  bool json = false;
};
/// What differs between two frames that are published, or were: objects, units, limits,
/// calibrations, last values. 1 when something does.
int Diff(const OptionsDiff& options);

}  // namespace zuma::host
