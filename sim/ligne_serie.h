#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/ref.h"
#include "base/valeur.h"
#include "sim/horloge_virtuelle.h"
#include "sim/pannes.h"

namespace zuma::sim {

class LigneSérie;

/// The far end of a simulated serial line. It says what it sends and after which reaction; the
/// line carries the bytes.
class AppareilSérie {
 public:
  /// A device that acts by that clock.
  explicit AppareilSérie(HorlogeVirtuelle& horloge) : horloge_(horloge) {}
  virtual ~AppareilSérie() = default;

  /// Put on a line: the place to ask for a first `Réveil`.
  virtual void Branche(LigneSérie&) {}
  /// Bytes have arrived, one at a time and at the pace of the line.
  virtual void Reçoit(std::string_view octets, LigneSérie& ligne) = 0;
  /// The instant asked for by `LigneSérie::Réveille` has come.
  virtual void Réveil(LigneSérie&) {}
  /// Runs already, as found by a program that starts; nothing on an instrument that only measures.
  virtual void MetEnMarche() {}
  /// Its clock, which its line runs by.
  [[nodiscard]] HorlogeVirtuelle& LHorloge() const noexcept { return horloge_; }

 protected:
  HorlogeVirtuelle& horloge_;  ///< clock of the machine
};

/// One simulated port and the wire behind it. Bytes travel one behind the other in each direction,
/// each for its time at the rate of the port, and arrive whether somebody looks or not: a late
/// answer comes late, behind the ones before it, whatever was asked since.
class LigneSérie : private Echéance {
 public:
  /// Start, eight bits, parity or a second stop bit, and stop.
  static constexpr double kBitsParOctet = 11;

  LigneSérie() = default;
  LigneSérie(const LigneSérie&) = delete;
  LigneSérie& operator=(const LigneSérie&) = delete;
  ~LigneSérie() override;

  /// Puts a device at the far end, in the place of the one that was there.
  void Attache(Ref<AppareilSérie> nouveau);

  // The library's side.

  /// Opens the port at that rate, in bauds: what came before is forgotten.
  void Ouvre(std::int32_t vitesse);
  /// False when the port still has too much to send: nothing of it leaves.
  [[nodiscard]] bool Ecrit(std::string_view octets, std::int32_t vitesse);
  /// What has arrived and was not taken yet, to be taken from there.
  [[nodiscard]] Octets& Reçus();
  /// Loses all that is on the wire and in the port.
  void Perd() noexcept;

  // The device's side.

  /// Sends bytes from `retard` microseconds on, or behind what is being sent.
  void Emet(std::string_view octets, double retard);
  /// `Réveil` after that time, in microseconds, instead of the one asked before.
  void Réveille(double retard);
  /// Time that a byte takes, in microseconds.
  [[nodiscard]] double DuréeOctet() const noexcept {
    return kBitsParOctet * 1e6 / (débit != 0 ? débit : vitesse_);
  }
  /// Rate of the port, in bauds.
  [[nodiscard]] std::int32_t Vitesse() const noexcept { return vitesse_; }

  Ref<AppareilSérie> appareil;  ///< at the far end; Nothing where nothing is attached
  Pannes pannes;                ///< of the line
  std::int32_t ouvertures = 0;  ///< times that the port was opened
  std::int32_t débit =
      0;             ///< of a wire that ignores the rate of the port, in bauds; 0 for the port's
  Hasard hasard{1};  ///< draws what the faults need

 private:
  struct EnRoute {
    double heure;
    char octet;
  };
  /// One direction of the wire, first byte first.
  struct Voie {
    std::vector<EnRoute> octets;
    double libre = 0;  ///< instant at which the last byte has arrived

    [[nodiscard]] double Arrivée() const noexcept;
    [[nodiscard]] char Retire();
  };
  [[nodiscard]] double Prochaine() const noexcept override;
  void Arrive() override;
  void Pose(Voie& voie, std::string_view octets, double départ);
  void Garde(char octet);
  void Babille();

  HorlogeVirtuelle* horloge_ = nullptr;
  std::int32_t vitesse_ = 9600;
  Voie aller_, retour_;
  double réveil_ = kJamais;
  double babil_ = 0;  ///< instant up to which a babbling line has spoken
  Octets reçus_;
  Octets figés_;  ///< what a stuck device goes on sending
  Octets envoi_;  ///< being damaged on its way
};

}  // namespace zuma::sim
