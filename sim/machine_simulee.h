#pragma once

#include <cstdint>

#include "core/chassis.h"
#include "sim/collaborateurs.h"
#include "sim/compteurs_virtuels.h"
#include "sim/horloge_virtuelle.h"
#include "sim/liaisons_simulees.h"
#include "sim/machine_bus.h"
#include "sim/machine_ports.h"

namespace zuma::sim {

/// A whole machine made of twins: one switch puts a frame on it.
class MachineSimulée {
 public:
  /// Messages of the library go to `messages`.
  explicit MachineSimulée(BoîteDeMessage& messages);
  MachineSimulée(const MachineSimulée&) = delete;
  MachineSimulée& operator=(const MachineSimulée&) = delete;

  /// Plugs a twin for everything that a loaded frame names and that has one.
  void Branche(Chassis& chassis);
  /// Brings the clock to `secondes` after the start and sets the terminals of the inputs: analog
  /// ones follow slow sines, each channel with its own phase, logic ones blink in turn.
  void AvanceJusquA(double secondes);

  Ref<HorlogeVirtuelle> horloge = Crée<HorlogeVirtuelle>();
  MachinePorts ports{*horloge};
  FabriqueLiaisonsSimulée liaisons;
  MachineBus bus{*horloge, liaisons};
  CompteursVirtuels compteurs{*horloge};
  FichiersEnMémoire fichiers;
  Plateforme services;

 private:
  struct Entrée {
    Bornes* bornes;
    std::int16_t numéro;
    bool logique;
    double phase;
  };
  void Anime(const Entrée& entrée, double secondes);

  std::vector<Entrée> entrées_;
  std::uint64_t passe_ = 0;
  double origine_ = 0;        ///< clock at the first pass, microseconds
  std::int64_t palier_ = -1;  ///< last step of the terminals
};

}  // namespace zuma::sim
