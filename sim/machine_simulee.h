#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/chassis.h"
#include "sim/cablage.h"
#include "sim/clavier_simule.h"
#include "sim/collaborateurs.h"
#include "sim/compteurs_virtuels.h"
#include "sim/horloge_virtuelle.h"
#include "sim/instrument_interroge.h"
#include "sim/liaisons_simulees.h"
#include "sim/machine_bus.h"
#include "sim/machine_instruments.h"
#include "sim/machine_pci.h"
#include "sim/machine_ports.h"
#include "sim/machine_reseaux.h"
#include "sim/presse.h"

namespace zuma::sim {

/// A whole machine made of twins: one switch puts a frame on it.
class MachineSimulée {
 public:
  /// Messages of the library go to `messages`; `drivers` are those that a frame may name.
  MachineSimulée(BoîteDeMessage& messages, Ref<RegistreDesDrivers> drivers);
  MachineSimulée(const MachineSimulée&) = delete;
  MachineSimulée& operator=(const MachineSimulée&) = delete;

  /// Plugs a twin for everything that a loaded frame names and that has one. Channels named by a
  /// wire hang on the press, the other inputs move by themselves.
  void Branche(Chassis& chassis, std::span<const Fil> câblage = {});
  /// Brings the clock to `secondes` after the start, unless it is past that already, and sets the
  /// terminals of the inputs: analog ones follow slow sines, each channel with its own phase, logic
  /// ones blink in turn. Returns the time that it is, in seconds after the start.
  double AvanceJusquA(double secondes);
  /// The terminal that a channel sits on; none for a channel that has none.
  [[nodiscard]] std::optional<Borne> BorneDe(const Canal& canal) const;

  Ref<HorlogeVirtuelle> horloge = Crée<HorlogeVirtuelle>();  ///< time of the machine
  MachinePorts ports{*horloge};                              ///< port-mapped boards
  MachinePCI pci;                                            ///< PCI boards
  FabriqueLiaisonsSimulée liaisons;                          ///< serial lines
  MachineBus bus{*horloge, liaisons};                        ///< devices of buses and lines
  MachineInstruments instruments{*horloge, liaisons};        ///< boards that are instruments
  MachineRéseaux réseaux{*horloge};                          ///< LVDT network and amplifiers
  CompteursVirtuels compteurs{*horloge};                     ///< fine event counters
  FichiersEnMémoire fichiers;                                ///< files that would be written
  ClavierSimulé clavier;                                     ///< keyboard of the operator
  Presse presse;  ///< the press that wired channels hang on
  ///@{
  /// Instruments on serial ports 1, 2 and 3.
  Ref<InstrumentInterrogé> balance = Crée<InstrumentInterrogé>(*horloge, kBalance14, 12.345);
  Ref<InstrumentInterrogé> comparateur = Crée<InstrumentInterrogé>(*horloge, kComparateur10, 3.21);
  Ref<InstrumentInterrogé> indicateur = Crée<InstrumentInterrogé>(*horloge, kIndicateurMSV, 54.32);
  ///@}
  /// Watchdog board of the frame; none until one is plugged.
  [[nodiscard]] CarteWDT01* ChienDeGarde() noexcept { return ports.Watchdog(); }
  /// Faults to come, in any order. An instant without one is without faults. Set before `Branche`
  /// is called, they strike in the start too.
  std::vector<PannePrévue> pannes;
  /// Seed of the luck of lines and boards; the same one gives the same run. Set before `Branche`.
  std::uint32_t graine = 0;
  /// Why the process should have ended.
  FinNotée fin;
  Plateforme services;  ///< what `Chassis` takes

 private:
  struct Entrée {
    Borne borne;
    bool logique;
    double phase;
  };
  struct FilPosé {
    Borne borne;
    const Fil* fil;
  };
  void BrancheLeCanal(const Canal& canal, bool logique, bool entrée);
  void Anime(Entrée& entrée, double secondes);
  void FaitVivreLaPresse();
  void AppliqueLesPannes(double secondes);
  void RègleLHeure(double secondes);
  void LitLesSorties(const FilPosé& posé);
  void PoseLesEntrées(FilPosé& posé);
  [[nodiscard]] double Bruit();

  std::span<const Fil> câblage_;
  std::vector<FilPosé> fils_;
  double heurePresse_ = 0;  ///< microseconds
  std::uint32_t bruit_ = 20'240'503;
  bool enPanne_ = false;  ///< faults were put on, and must be taken off
  double avance_ = 0;     ///< seconds by which the clock of the day is wrong
  std::vector<Entrée> entrées_;
  std::uint64_t passe_ = 0;
  double origine_ = 0;        ///< clock at the first pass, microseconds
  std::int64_t palier_ = -1;  ///< last step of the terminals
};

}  // namespace zuma::sim
