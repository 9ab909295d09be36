#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "core/chassis.h"

namespace zuma::sim {
class MachineSimulée;
}

namespace zuma::host {

/// What a frame runs on. Made before the frame, released after it.
class Machine {
 public:
  virtual ~Machine() = default;

  [[nodiscard]] virtual Plateforme& Services() = 0;
  [[nodiscard]] virtual Ref<ZED_Timer> Timer() = 0;
  /// Called once, between load and start.
  virtual void Branche(Chassis&) {}
  /// Called before each pass: lets the time of the machine come to `secondes` after the start.
  virtual void AvanceJusquA(double secondes) = 0;
  /// What stands at the terminals of a channel, for people; empty when nobody knows.
  [[nodiscard]] virtual std::string Borne(const Canal&) const { return {}; }
  /// The twins, to be looked at and disturbed; none on a real machine.
  [[nodiscard]] virtual sim::MachineSimulée* Jumelle() { return nullptr; }
};

/// The machine at hand. Messages of the library go to `messages`.
[[nodiscard]] std::unique_ptr<Machine> MachineRéelle(BoîteDeMessage& messages);
/// How fast the simulated machine's time runs.
enum class Cadence { Réelle, Libre };
/// Twins for everything the frame names, the demo frame's press included.
[[nodiscard]] std::unique_ptr<Machine> MachineSimulée(BoîteDeMessage& messages,
                                                      Cadence cadence = Cadence::Réelle);

}  // namespace zuma::host
