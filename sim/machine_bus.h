#pragma once

#include <functional>
#include <vector>

#include "core/chassis.h"
#include "sim/carte_can.h"
#include "sim/horloge_virtuelle.h"
#include "sim/liaisons_simulees.h"
#include "sim/regle_mts.h"

namespace zuma::sim {

/// The rulers, balances and gauges of a frame as twins on simulated buses and lines.
class MachineBus {
 public:
  MachineBus(HorlogeVirtuelle& horloge, FabriqueLiaisonsSimulée& liaisons)
      : horloge_(horloge), liaisons_(liaisons) {}

  /// Plugs the twin of every ruler, balance and gauge of a loaded frame, before it is started.
  void Branche(Chassis& chassis);
  /// Brings each quantity to where it is after `secondes`: slow sines, each with its own phase.
  void Anime(double secondes);
  [[nodiscard]] CarteCANSimulée& Can() noexcept { return can_; }

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

  HorlogeVirtuelle& horloge_;
  FabriqueLiaisonsSimulée& liaisons_;
  CarteCANSimulée can_{horloge_};
  DialogueRègles dialogue_;
  std::vector<RèglePosée> posées_;
  std::vector<Grandeur> grandeurs_;
};

}  // namespace zuma::sim
