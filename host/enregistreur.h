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

#include "host/ecrivain.h"
#include "host/rangees_publiees.h"
#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// Recording of values of a frame: a CSV file in UTF-8 (header "name [unit]", decimal point,
/// seconds from the start, a missing reading empty and never 0) and beside it a JSON file that says
/// what was recorded. It looks at the publication of the frame as any other reader does, from a
/// thread of its own, and writes once a second: no disk holds the machine up, and a crash of the
/// recording program loses a second at most. What becomes of the recording is told by `Etat`, and
/// stops nothing.
class Enregistreur {
 public:
  /// What happens when the writer is behind: the time of a machine goes on, and rows are lost once
  /// the ring of samples comes round; simulated time may wait.
  enum class Retard : std::uint8_t { Perd, Attend };
  /// Texts for the JSON file.
  using Textes = std::vector<std::pair<std::string, std::string>>;

  /// Creates both files, so that a name in use is refused before anything starts; throws
  /// `MauvaisUsage`. They go again if nothing is recorded.
  Enregistreur(const std::string& fichier, Retard retard, Contenu contenu = {});
  ~Enregistreur();
  Enregistreur(const Enregistreur&) = delete;
  Enregistreur& operator=(const Enregistreur&) = delete;

  /// Begins with the next refresh of the sensors. `objets` are ranks of `lecteur`'s frame. Seconds
  /// count from `origine`, of the samples.
  void Commence(const publication::Lecteur& lecteur, std::vector<std::size_t> objets,
                const Textes& spécimen, double origine);
  /// Behind each pass of a simulated machine whose time may wait for the disk.
  void Suit();
  /// Nothing is recorded from here on. Does not wait: the writer ends by itself.
  void Termine();
  /// Behind `Termine`: waits for the writer, as long as the disk takes. To be called once the
  /// outputs are at rest.
  void Ferme();
  /// After `Ferme` it is what the recording came to.
  [[nodiscard]] EtatDEnregistrement Etat() const;

 private:
  void Tourne();
  void DécritDansLeJson();
  [[nodiscard]] bool AttendLaFin();

  std::string nom_;
  Retard retard_;
  Contenu contenu_;
  FichierEnAjout csv_, json_;
  std::string description_;  ///< empty once it is in its file
  std::optional<RangéesPubliées> rangées_;
  std::optional<Ecrivain> écrivain_;
  std::uint64_t retardAuPlus_ = 0;   ///< samples
  std::atomic<int> erreur_ = 0;      ///< of the JSON file, or what ended the writer
  std::atomic<bool> finie_ = false;  ///< the writer has ended: nothing takes rows any more
  std::mutex verrou_;
  std::condition_variable réveil_;
  bool fin_ = false;
  std::thread fil_;
};

class ChassisEnMarche;

/// Records all sensors of a frame of this process from its next refresh on.
void Enregistre(ChassisEnMarche& marche, Enregistreur& enregistreur,
                const Enregistreur::Textes& spécimen);

/// Closes a recording, the outputs being at rest, and tells on the error output what is missing;
/// true when nothing is.
[[nodiscard]] bool FermeEtDit(Enregistreur& enregistreur);

}  // namespace zuma::host
