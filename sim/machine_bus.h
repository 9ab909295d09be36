#pragma once

#include <functional>
#include <span>
#include <vector>

#include "core/chassis.h"
#include "sim/bus_modbus.h"
#include "sim/carte_can.h"
#include "sim/horloge_virtuelle.h"
#include "sim/liaisons_simulees.h"
#include "sim/regle_mts.h"
#include "sim/thumler_simule.h"

namespace zuma::sim {

/// The rulers, balances, gauges, Modbus slaves and drives of a frame as twins on simulated buses
/// and lines.
class MachineBus {
 public:
  /// No twins yet.
  MachineBus(HorlogeVirtuelle& horloge, FabriqueLiaisonsSimulée& liaisons)
      : horloge_(horloge), liaisons_(liaisons) {}

  /// Plugs the twin of everything that a loaded frame has on a bus or line, before it is started.
  void Branche(Chassis& chassis);
  /// Brings each quantity to where it is after `secondes`: slow sines, each with its own phase.
  void Anime(double secondes);
  /// Lets the USB drive run, as found by a program that starts, when such a fault strikes it.
  void MetEnMarche(std::span<const PannePrévue> pannes);
  /// Puts the faults of that instant, and no other, on the CAN card and the USB drive.
  void Applique(std::span<const PannePrévue> pannes, double secondes);
  /// The CAN card, with the rulers on its buses.
  [[nodiscard]] CarteCANSimulée& Can() noexcept { return can_; }
  /// The drive on USB.
  [[nodiscard]] ThumlerSimulé& Thumler() noexcept { return thumler_; }

 private:
  struct RèglePosée {
    std::int32_t carte, port;
    std::uint32_t série;
  };
  using Grandeur = std::function<void(double)>;  ///< sets a quantity from -1 to 1 times its range
  void BrancheRègle(const Fonction& bloc, const Canal& canal);
  void BrancheRègle25(const Canal& canal);
  void Pose(std::int32_t carte, std::int32_t port, const Ref<RègleMTSSimulée>& règle);
  void BrancheBalance(const Fonction& bloc, const Canal& canal);
  void BrancheMETRO(const Fonction& bloc, bool multiplexeur);
  void BrancheCanaux(const Fonction& bloc);
  void BrancheModbus(Carte& carte);
  void PoseLesRegistres(const Fonction& bloc, const Ref<EsclaveModbus>& esclave);

  HorlogeVirtuelle& horloge_;
  FabriqueLiaisonsSimulée& liaisons_;
  CarteCANSimulée can_{horloge_};
  ThumlerSimulé thumler_;
  DialogueRègles dialogue_;
  std::vector<RèglePosée> posées_;
  std::vector<Grandeur> grandeurs_;
};

}  // namespace zuma::sim
