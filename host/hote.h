#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/ref.h"
#include "host/machine.h"
#include "tree/ligne_driver.h"

namespace zuma {
class Capteur;
class Chassis;
class Commande;
class EntréeLogique;
class SortieLogique;
}  // namespace zuma

namespace zuma::host {

class ChassisEnMarche;
class Interruption;
class Recueil;

/// What a host chooses; each default works as it stands.
struct ChoixDHôte {
  std::string fichier;                ///< configuration database, as `zuma init` makes one
  std::int32_t chassis = 1;           ///< "Index" of the frame
  bool simulation = false;            ///< on twins; the demo frame's press moves with them
  Cadence cadence = Cadence::Réelle;  ///< of the simulated machine
  Raccordement raccordement{};  ///< devices of a real machine, where they are not the usual ones
  /// Rows of the host's own beside the library's drivers. They, and what they point at, outlive the
  /// `Hôte`.
  std::span<const LigneDriver> drivers{};
  /// The frame is started although its load, link or start left entries: its stop is latched then,
  /// until it is acknowledged.
  bool malgréTout = false;
  /// Folder that keeps each stop as a case: `stops` beside the database when it is empty.
  std::string arrêts{};
  /// Hears each entry of the error record and each message, as one line. Left out: the error
  /// output.
  std::function<void(const std::string&)> quandProblème{};
};

/// A frame in a host's own program, in a few lines: opened, started, run at its pace, and at rest
/// by whatever way the program leaves.
///
///     zuma::host::Hôte hôte({.fichier = "demo.db", .simulation = true});
///     const zuma::Capteur& force = hôte.Capteur("Force");
///     hôte.Tourne([&] { return force.ValeurCourante() < 50; });
///
/// Who wants another order, other collaborators or several frames uses `Chassis` itself; this class
/// hides none of it. One thread, the host's.
class Hôte {
 public:
  /// Opens, loads, links and starts the frame. Throws `MauvaisUsage` for a file or a frame that is
  /// not there and for drivers that clash, `DépartRefusé`, with all problems and its outputs at
  /// rest, when load, link or start left entries.
  explicit Hôte(ChoixDHôte choix);
  /// Puts the outputs to rest, waits until links have confirmed it (1.5 s, 15 s on a bus of slow
  /// slaves), and releases the frame.
  ~Hôte();
  Hôte(const Hôte&) = delete;
  Hôte& operator=(const Hôte&) = delete;

  /// The frame itself, for all that this class does not offer.
  [[nodiscard]] zuma::Chassis& LeChassis();
  ///@{
  /// The object of that label ("Label" of its row). Throws `MauvaisUsage`, with the labels that are
  /// there, when there is none.
  [[nodiscard]] zuma::Capteur& Capteur(std::string_view label);
  [[nodiscard]] zuma::Commande& Commande(std::string_view label);
  [[nodiscard]] zuma::EntréeLogique& EntréeLogique(std::string_view label);
  [[nodiscard]] zuma::SortieLogique& SortieLogique(std::string_view label);
  ///@}

  /// Heard behind the pass in which a stop is latched, with its first cause; the outputs are at
  /// rest by then. It may acknowledge or leave, but moves nothing.
  void QuandArrêt(std::function<void(const std::string& cause)> écoute);
  /// Runs passes, one a millisecond, until `continue_` says false, `secondes` have gone by, Ctrl-C
  /// or a request to terminate comes, or a device ends the program. `continue_` is asked behind
  /// each refresh of the sensors. False when it was not `continue_` or the time that ended it.
  bool Tourne(const std::function<bool()>& continue_, std::optional<double> secondes = {});
  /// Seconds since the start, by the machine's clock.
  [[nodiscard]] double Secondes() const noexcept { return secondes_; }

  /// Fires the stop for the operator: latched like any other.
  void Arrête(std::string_view cause);
  /// A stop is latched: no command reaches its output.
  [[nodiscard]] bool EstArrêté() const;
  /// Acknowledges a stop. Nothing moves by itself behind it. False while its cause lasts.
  bool Acquitte();
  /// The third act, behind release and acknowledgement: watchdog and copying commands serve again.
  bool RemetEnService();

 private:
  void Passe();
  void DitLesNouveaux();

  ChoixDHôte choix_;
  std::unique_ptr<Interruption> interruption_;
  Ref<Recueil> recueil_;
  std::unique_ptr<Machine> machine_;
  std::unique_ptr<ChassisEnMarche> marche_;
  std::function<void(const std::string&)> quandArrêt_;
  bool arrêtDit_ = false;
  std::size_t dits_ = 0;
  double secondes_ = 0;
};

}  // namespace zuma::host
