#pragma once

#include <array>
#include <cstdint>
#include <utility>

#include "platform/collaborateurs.h"
#include "platform/services.h"

namespace zuma::linux_ {

/// The machine instructions below `PortsLinux`, apart so that it can be tried without them.
class InstructionsES {
 public:
  virtual ~InstructionsES() = default;
  /// Asks the system for `nombre` ports from `début`; gives 0, or the system's error number.
  [[nodiscard]] virtual int Demande(std::uint16_t début, std::uint16_t nombre) noexcept = 0;
  /// Reads 1, 2 or 4 bytes from a port that was granted.
  [[nodiscard]] virtual std::uint32_t Lit(std::uint16_t port, unsigned octets) noexcept = 0;
  /// Writes 1, 2 or 4 bytes to a port that was granted.
  virtual void Ecrit(std::uint16_t port, std::uint32_t valeur, unsigned octets) noexcept = 0;
};

/// The processor's own: x86 alone has I/O ports, every request is refused elsewhere. The grant
/// holds for the thread that asked, so all access must come from one thread.
[[nodiscard]] InstructionsES& InstructionsDuProcesseur() noexcept;

/// I/O ports of the machine. A group of 16 ports is asked of the system at its first access and
/// never again. Where it is refused, the error record says once what to do, and the board reads
/// as an absent one does: all bits set, writes lost.
class PortsLinux final : public PortsES {
 public:
  /// A refusal is told in `registre`; Nothing tells nobody.
  explicit PortsLinux(Ref<ZED_Erreur> registre,
                      InstructionsES& instructions = InstructionsDuProcesseur())
      : registre_(std::move(registre)), instructions_(instructions) {}

  [[nodiscard]] std::uint8_t Inp(std::uint16_t port) override {
    return static_cast<std::uint8_t>(Lit(port, 1));
  }
  [[nodiscard]] std::uint16_t Inpw(std::uint16_t port) override {
    return static_cast<std::uint16_t>(Lit(port, 2));
  }
  [[nodiscard]] std::uint32_t Inpd(std::uint16_t port) override { return Lit(port, 4); }
  void Outp(std::uint16_t port, std::uint8_t octet) override { Ecrit(port, octet, 1); }
  void Outpw(std::uint16_t port, std::uint16_t mot) override { Ecrit(port, mot, 2); }
  void Outpd(std::uint16_t port, std::uint32_t mot) override { Ecrit(port, mot, 4); }

  /// True once the system has refused a port.
  [[nodiscard]] bool Refusés() const noexcept { return refusés_; }

 private:
  static constexpr std::uint16_t kParGroupe = 16;
  enum class Droit : std::uint8_t { Inconnu, Accordé, Refusé };

  [[nodiscard]] std::uint32_t Lit(std::uint16_t port, unsigned octets) {
    return Permis(port, octets) ? instructions_.Lit(port, octets) : ~std::uint32_t{0};
  }
  void Ecrit(std::uint16_t port, std::uint32_t valeur, unsigned octets) {
    if (Permis(port, octets)) instructions_.Ecrit(port, valeur, octets);
  }
  [[nodiscard]] bool Permis(std::uint16_t port, unsigned octets);
  [[nodiscard]] bool GroupePermis(std::uint16_t groupe);
  void SignaleRefus(std::uint16_t groupe, int erreur);

  Ref<ZED_Erreur> registre_;
  InstructionsES& instructions_;
  std::array<Droit, 0x10000 / kParGroupe> droits_{};
  bool refusés_ = false;
};

}  // namespace zuma::linux_
