#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/chassis.h"
#include "host/ecrivain.h"

namespace zuma::host {

/// Recording of the sensors: a CSV file in UTF-8 (header "name [unit]", decimal point, seconds from
/// the start, a missing reading empty and never 0) and beside it a JSON file that says what was
/// recorded. A pass only copies numbers; a thread of its own writes them once a second, so that no
/// disk holds the machine up and a crash loses a second at most. What becomes of the recording is
/// told by `Etat`, and stops nothing.
class Enregistreur {
 public:
  /// What happens to a row when the writer is behind: the time of a machine goes on without it,
  /// simulated time may wait.
  enum class Retard : std::uint8_t { Perd, Attend };
  /// Whether each reading is followed by its age in seconds.
  enum class Ages : std::uint8_t { Sans, Avec };

  /// Creates both files, so that a name in use is refused before anything starts; throws
  /// `MauvaisUsage`. They go again if nothing is recorded.
  Enregistreur(const std::string& fichier, Retard retard, Ages âges = Ages::Sans);
  ~Enregistreur();
  Enregistreur(const Enregistreur&) = delete;
  Enregistreur& operator=(const Enregistreur&) = delete;

  /// Begins with the sensors of `chassis`. `spécimen`: texts for the JSON file.
  void Commence(Chassis& chassis, const std::vector<std::pair<std::string, std::string>>& spécimen);
  /// One row, `secondes` after the start. Neither allocates, locks, writes nor waits.
  void Note(double secondes);
  /// No more rows: lets go of the sensors, before their frame goes. Waits for nothing.
  void Termine() noexcept;
  /// Behind `Termine`: waits for the writer, as long as the disk takes. To be called once the
  /// outputs are at rest.
  void Ferme();
  /// From the thread that notes. After `Ferme` it is what the recording came to.
  [[nodiscard]] EtatDEnregistrement Etat() const;

 private:
  void Tourne();
  void DécritDansLeJson();
  [[nodiscard]] bool AttendLaFin();

  std::string nom_;
  Retard retard_;
  Ages âges_;
  FichierEnAjout csv_, json_;
  std::string description_;  ///< empty once it is in its file
  std::vector<CapteurRef> capteurs_;
  std::optional<FileDeRangées> rangées_;
  std::optional<Ecrivain> écrivain_;
  std::atomic<int> erreur_ = 0;      ///< of the JSON file, or what ended the writer
  std::atomic<bool> finie_ = false;  ///< the writer has ended: nothing takes rows any more
  std::mutex verrou_;
  std::condition_variable réveil_;
  bool fin_ = false;
  std::thread fil_;
};

/// Closes a recording, the outputs being at rest, and tells on the error output what is missing;
/// true when nothing is.
[[nodiscard]] bool FermeEtDit(Enregistreur& enregistreur);

}  // namespace zuma::host
