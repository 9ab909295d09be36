#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::sim {

/// Simulated WDT 01 watchdog board, at its two ports: data at the base, status above.
///
/// It takes one byte at a time and is busy for a while after each; a byte that comes then is lost.
/// Line "S" arms it and starts its time anew, "E" stops it, "T=" and seconds sets its time while
/// it is stopped; an empty line does nothing. Armed and not refreshed within its time it trips:
/// the contact of the safety chain opens, until it is stopped. Without a time it never trips.
///
/// Status: bit 0 armed, bit 1 tripped, bit 2 the last line was refused, bit 7 ready.
class CarteWDT01 : public PortsES {
 public:
  static constexpr std::uint8_t kArmée = 0x01;
  static constexpr std::uint8_t kDéclenchée = 0x02;
  static constexpr std::uint8_t kRefusée = 0x04;
  static constexpr std::uint8_t kPrête = 0x80;

  CarteWDT01(std::uint16_t base, Ref<ZED_Timer> timer) : base_(base), timer_(std::move(timer)) {}

  [[nodiscard]] std::uint8_t Inp(std::uint16_t port) override;
  [[nodiscard]] std::uint16_t Inpw(std::uint16_t port) override { return Inp(port); }
  [[nodiscard]] std::uint32_t Inpd(std::uint16_t port) override { return Inp(port); }
  void Outp(std::uint16_t port, std::uint8_t octet) override;
  void Outpw(std::uint16_t port, std::uint16_t mot) override {
    Outp(port, static_cast<std::uint8_t>(mot));
  }
  void Outpd(std::uint16_t port, std::uint32_t mot) override {
    Outp(port, static_cast<std::uint8_t>(mot));
  }

  /// Contact of the safety chain: open once the board has tripped.
  [[nodiscard]] bool ContactFermé();
  [[nodiscard]] bool EstArmée() const noexcept { return armée_; }
  /// Time in seconds, 0 for none.
  [[nodiscard]] double Temps() const noexcept { return temps_; }

  /// Time for which the board is busy after a byte, in microseconds.
  void DuréeOctet(double microsecondes) noexcept { duréeOctet_ = microsecondes; }
  /// A board that hangs: it never gets ready again, and its time goes on.
  void Panne(bool enPanne) noexcept { enPanne_ = enPanne; }

  /// Number of the pass, for the log.
  void Passe(std::uint64_t numéro) noexcept { passe_ = numéro; }
  struct Ligne {
    std::uint64_t passe;
    std::string texte;
  };
  /// The last lines received, empty ones left out, each with the pass of its end.
  [[nodiscard]] const std::deque<Ligne>& Journal() const noexcept { return journal_; }
  void VideLeJournal() noexcept { journal_.clear(); }
  /// Bytes lost because they came while the board was busy.
  [[nodiscard]] std::size_t OctetsPerdus() const noexcept { return perdus_; }

 private:
  void Avance(double maintenant);
  void Exécute(double maintenant);

  std::uint16_t base_;
  Ref<ZED_Timer> timer_;
  std::string reçue_;
  double temps_ = 0;
  double échéance_ = 0;       ///< microseconds
  double occupéeJusquà_ = 0;  ///< microseconds
  double duréeOctet_ = 100;
  bool armée_ = false;
  bool déclenchée_ = false;
  bool refusée_ = false;
  bool enPanne_ = false;
  std::uint64_t passe_ = 0;
  std::size_t perdus_ = 0;
  std::deque<Ligne> journal_;
};

}  // namespace zuma::sim
