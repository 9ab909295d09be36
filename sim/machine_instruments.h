#pragma once

#include <functional>
#include <vector>

#include "core/chassis.h"
#include "sim/horloge_virtuelle.h"
#include "sim/liaisons_simulees.h"

namespace zuma::sim {

/// The instruments of a frame's boards as twins on the simulated serial lines.
class MachineInstruments {
 public:
  using Grandeur = std::function<void(double)>;  ///< sets a quantity from -1 to 1 times its range

  /// No twins yet.
  MachineInstruments(HorlogeVirtuelle& horloge, FabriqueLiaisonsSimulée& liaisons)
      : horloge_(horloge), liaisons_(liaisons) {}

  /// Plugs the twin of every board of a loaded frame that is an instrument, before it is started.
  void Branche(Chassis& chassis);
  /// Brings each quantity to where it is after `secondes`: slow sines, each with its own phase.
  void Anime(double secondes);

  // For the rows of the table of twins.

  /// Clock of the machine.
  [[nodiscard]] HorlogeVirtuelle& LHorloge() noexcept { return horloge_; }
  /// Puts a device on the serial port that the board's configuration names; its quantity follows
  /// `grandeur`.
  void Pose(const Carte& carte, Ref<AppareilSérie> appareil, Grandeur grandeur);

 private:
  HorlogeVirtuelle& horloge_;
  FabriqueLiaisonsSimulée& liaisons_;
  std::vector<Grandeur> grandeurs_;
};

}  // namespace zuma::sim
