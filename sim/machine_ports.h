#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "core/chassis.h"
#include "sim/borne.h"
#include "sim/bus_ports.h"
#include "sim/carte_wdt01.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// The port-mapped boards of a frame as twins on a simulated bus.
class MachinePorts {
 public:
  /// No twins yet.
  explicit MachinePorts(HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  /// Plugs the twin of every port-mapped block of a loaded frame, one for each base address, and
  /// that of its watchdog board. To be called before the frame is started.
  void Branche(Chassis& chassis);
  /// The terminal that a channel sits on; none for a channel of any other board, or of a line that
  /// no board has.
  [[nodiscard]] std::optional<Borne> BorneDe(const Canal& canal) const;
  /// The bus that the twins hang on.
  [[nodiscard]] BusPorts& Bus() noexcept { return bus_; }
  /// Seed of the luck of all boards.
  void Graine(std::uint32_t graine);
  /// Puts the faults of that instant, and no other, on all boards, that of the watchdog included.
  void Applique(std::span<const PannePrévue> pannes, double secondes);
  /// The watchdog board; none on a frame without one.
  [[nodiscard]] CarteWDT01* Watchdog() const noexcept { return watchdog_.get(); }

 private:
  struct Enfichée {
    std::uint16_t base;
    std::unique_ptr<CarteSimulée> carte;
  };
  template <class Travail>
  void PourChaque(Travail&& travail);
  [[nodiscard]] CarteSimulée* Trouve(std::uint16_t base) const;

  HorlogeVirtuelle& horloge_;
  BusPorts bus_;
  std::vector<Enfichée> cartes_;
  std::unique_ptr<CarteWDT01> watchdog_;
  std::uint16_t adresseDuWatchdog_ = 0;
};

}  // namespace zuma::sim
