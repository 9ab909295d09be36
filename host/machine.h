#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/chassis.h"

namespace zuma::sim {
class MachineSimulée;
}

namespace zuma::host {

/// What a frame runs on. Made before the frame, released after it.
class Machine {
 public:
  virtual ~Machine() = default;

  /// The services that the frame is made with; they live as long as the machine.
  [[nodiscard]] virtual Plateforme& Services() = 0;
  /// The timer of the frame.
  [[nodiscard]] virtual Ref<ZED_Timer> Timer() = 0;
  /// Called once, between load and start.
  virtual void Branche(Chassis&) {}
  /// Called before each pass: lets the time of the machine come to `secondes` after the start.
  /// Returns the time that it is by then; a pass may have taken longer.
  virtual double AvanceJusquA(double secondes) = 0;
  /// The frame is started and published, and its first pass comes next.
  virtual void AprèsLeDépart(Chassis&) {}
  /// Instant of the pass to come, microseconds of the machine's timer.
  [[nodiscard]] virtual double InstantDePasse() { return Timer()->LitMicrosecondes(); }
  /// The recording that stands in the place of a machine; empty for one that moves or is simulated.
  [[nodiscard]] virtual std::string Enregistrement() const { return {}; }
  /// Nothing comes any more: a recording that is played again has an end.
  [[nodiscard]] virtual bool AuBout() const { return false; }
  /// What stands at the terminals of a channel, for people; empty when nobody knows.
  [[nodiscard]] virtual std::string Borne(const Canal&) const { return {}; }
  /// Why the process has to end at once; empty while nothing asked for it. A real machine never
  /// answers: there the process is gone.
  [[nodiscard]] virtual std::string_view Fini() const { return {}; }
  /// What the host does before an end that a device asks for; empty: nothing. Not called by a
  /// simulated machine, which says `Fini` instead.
  virtual void AvantLaFin(const std::function<void()>&) {}
  /// Hands over what its adapters told on their own: a missing interface, a lost board.
  virtual void Rapporte(ZED_Erreur&) const {}
  /// The twins, to be looked at and disturbed; none on a real machine.
  [[nodiscard]] virtual sim::MachineSimulée* Jumelle() { return nullptr; }
};

/// Devices of the machine at hand, where they are not the usual ones.
struct Raccordement {
  std::map<std::int32_t, std::string> ports;  ///< serial devices by number
  std::map<std::pair<std::int32_t, std::int32_t>, std::string>
      can;  ///< interfaces by card and port
};
/// Reads "number=device" and "card:port=interface". Throws `MauvaisUsage` on anything else, and on
/// a port that is given twice.
[[nodiscard]] Raccordement LitLesPorts(const std::vector<std::string>& ports,
                                       const std::vector<std::string>& can);

/// The machine at hand. Messages of the library go to `messages`; `drivers` are those that a frame
/// may name, Nothing for the library's own.
[[nodiscard]] std::unique_ptr<Machine> MachineRéelle(BoîteDeMessage& messages,
                                                     const Raccordement& raccordement = {},
                                                     Ref<RegistreDesDrivers> drivers = {});
/// How fast the simulated machine's time runs.
enum class Cadence { Réelle, Libre };
/// Twins for everything the frame names, the demo frame's press included.
[[nodiscard]] std::unique_ptr<Machine> MachineSimulée(BoîteDeMessage& messages,
                                                      Cadence cadence = Cadence::Réelle,
                                                      Ref<RegistreDesDrivers> drivers = {});

}  // namespace zuma::host
