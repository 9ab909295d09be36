#pragma once

#include <cstdint>
#include <vector>

#include "platform/services.h"
#include "sim/pannes.h"

namespace zuma::sim {

/// A board on the simulated port bus. Offsets count from its base address. Wider accesses are made
/// of bytes, low one first, unless a board does better.
class AppareilPorts {
 public:
  virtual ~AppareilPorts() = default;
  /// A byte read at that offset.
  [[nodiscard]] virtual std::uint8_t Lit(std::uint16_t décalage) = 0;
  /// A byte written at that offset.
  virtual void Ecrit(std::uint16_t décalage, std::uint8_t octet) = 0;
  /// A word read at that offset: two bytes, unless the board does better.
  [[nodiscard]] virtual std::uint16_t LitMot(std::uint16_t décalage);
  /// A word written at that offset: two bytes, unless the board does better.
  virtual void EcritMot(std::uint16_t décalage, std::uint16_t mot);

  PannesDeCarte pannes;  ///< what ails the board
};

/// The port bus of the simulated machine. An address where no board answers reads as all ones.
class BusPorts : public PortsES {
 public:
  /// One write, with the pass it was made in, so that "within the same pass" is a fact.
  struct Ecriture {
    std::uint64_t passe;   ///< number of the pass
    std::uint16_t port;    ///< first port
    std::uint32_t valeur;  ///< as it was written
    std::uint8_t octets;   ///< width of the write
  };

  /// Puts a board at `base`; it outlives the bus. Boards must not overlap.
  void Attache(std::uint16_t base, std::uint16_t longueur, AppareilPorts& appareil);

  [[nodiscard]] std::uint8_t Inp(std::uint16_t port) override;
  [[nodiscard]] std::uint16_t Inpw(std::uint16_t port) override;
  [[nodiscard]] std::uint32_t Inpd(std::uint16_t port) override;
  void Outp(std::uint16_t port, std::uint8_t octet) override;
  void Outpw(std::uint16_t port, std::uint16_t mot) override;
  void Outpd(std::uint16_t port, std::uint32_t mot) override;

  /// Number of the pass that writes are logged under.
  void Passe(std::uint64_t numéro) noexcept { passe_ = numéro; }
  /// Keeps the writes made from now on.
  void Journalise(bool oui) { journalise_ = oui; }
  /// The writes kept, oldest first.
  [[nodiscard]] const std::vector<Ecriture>& Ecritures() const noexcept { return écritures_; }
  /// Forgets the writes kept.
  void OublieEcritures() noexcept { écritures_.clear(); }

 private:
  struct Plage {
    std::uint16_t base;
    std::uint16_t longueur;
    AppareilPorts* appareil;
  };
  [[nodiscard]] const Plage* Trouve(std::uint16_t port) const noexcept;
  void Note(std::uint16_t port, std::uint32_t valeur, std::uint8_t octets);

  std::vector<Plage> plages_;
  std::vector<Ecriture> écritures_;
  std::uint64_t passe_ = 0;
  bool journalise_ = false;
};

}  // namespace zuma::sim
