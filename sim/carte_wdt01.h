#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "sim/bus_ports.h"
#include "sim/horloge_virtuelle.h"

namespace zuma::sim {

/// Simulated WDT 01 watchdog board, at its two ports: data at the base, status above.
///
/// It takes one byte at a time and is busy for a while after each; a byte that comes then is lost.
/// Line "S" arms it and starts its time anew, "E" stops it, "T=" and seconds sets its time while
/// it is stopped; an empty line does nothing. Armed and not refreshed within its time it trips:
/// the contact of the safety chain opens, until it is stopped. Without a time it never trips.
///
/// Status: bit 0 armed, bit 1 tripped, bit 2 the last line was refused, bit 7 ready.
class CarteWDT01 : public AppareilPorts {
 public:
  /// Ports that the board takes.
  static constexpr std::uint16_t kPorts = 2;
  ///@{
  /// Bits of the status.
  static constexpr std::uint8_t kArmée = 0x01;
  static constexpr std::uint8_t kDéclenchée = 0x02;
  static constexpr std::uint8_t kRefusée = 0x04;
  static constexpr std::uint8_t kPrête = 0x80;
  ///@}

  /// A board whose time runs by that clock.
  explicit CarteWDT01(const HorlogeVirtuelle& horloge) : horloge_(horloge) {}

  [[nodiscard]] std::uint8_t Lit(std::uint16_t décalage) override;
  void Ecrit(std::uint16_t décalage, std::uint8_t octet) override;

  /// Contact of the safety chain: open once the board has tripped.
  [[nodiscard]] bool ContactFermé();
  /// Armed: it must be refreshed within its time.
  [[nodiscard]] bool EstArmée() const noexcept { return armée_; }
  /// Time in seconds, 0 for none.
  [[nodiscard]] double Temps() const noexcept { return temps_; }

  /// Time for which the board is busy after a byte, in microseconds.
  void DuréeOctet(double microsecondes) noexcept { duréeOctet_ = microsecondes; }
  /// A board that hangs: it is never ready, what it is sent is lost, and its time goes on.
  void Panne(bool enPanne) noexcept { pannes.bloquée = enPanne; }

  /// The last lines received, empty ones left out.
  [[nodiscard]] const std::deque<std::string>& Lignes() const noexcept { return lignes_; }
  /// Forgets the lines received.
  void OublieLesLignes() noexcept { lignes_.clear(); }
  /// Bytes lost because they came while the board was busy.
  [[nodiscard]] std::size_t OctetsPerdus() const noexcept { return perdus_; }

 private:
  void Avance();
  void Exécute();

  const HorlogeVirtuelle& horloge_;
  std::string reçue_;
  double temps_ = 0;
  double échéance_ = 0;       ///< microseconds
  double occupéeJusquà_ = 0;  ///< microseconds
  double duréeOctet_ = 100;
  bool armée_ = false;
  bool déclenchée_ = false;
  bool refusée_ = false;
  std::size_t perdus_ = 0;
  std::deque<std::string> lignes_;
};

}  // namespace zuma::sim
