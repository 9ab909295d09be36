#pragma once

#include <cstdint>

#include "platform/clavier.h"

namespace zuma::linux_ {

/// What is printed on the keys: the kernel numbers them by place, the program by letter.
enum class DispositionClavier : std::uint8_t { Azerty, Qwerty };

/// Virtual key of a kernel key code (KEY_...), 0 for a key that the program has no number for.
/// Left and right of shift, control and alt are one key.
[[nodiscard]] std::uint8_t ToucheVirtuelle(unsigned code, DispositionClavier disposition) noexcept;

/// Key states kept from the kernel's key events.
class EtatTouches {
 public:
  /// All keys are up.
  explicit EtatTouches(DispositionClavier disposition) noexcept : disposition_(disposition) {}

  /// One event: 1 pressed, 0 released, 2 auto-repeat, which changes nothing.
  void Reçoit(unsigned code, int valeur) noexcept;
  /// Lights of the locks, as they are when a keyboard is opened.
  void Verrou(std::uint8_t touche, bool allumé) noexcept;

  /// The state as the program reads it.
  [[nodiscard]] const EtatClavier& Etat() const noexcept { return état_; }
  /// Overwrites the state, as a program may.
  void Ecrit(const EtatClavier& état) noexcept { état_ = état; }
  /// What is printed on the keys.
  [[nodiscard]] DispositionClavier Disposition() const noexcept { return disposition_; }

 private:
  DispositionClavier disposition_;
  EtatClavier état_{};
};

}  // namespace zuma::linux_
