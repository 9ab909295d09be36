#pragma once

#include <cstdint>

#include "platform/clavier.h"

namespace zuma::sim {

/// Keyboard whose keys are pressed by the program, by virtual key code.
class ClavierSimulé : public Clavier {
 public:
  /// Presses a key down.
  void Enfonce(std::uint8_t touche) noexcept {
    état_[touche] = static_cast<std::uint8_t>((état_[touche] ^ kToucheBasculée) | kToucheEnfoncée);
  }
  /// Lets a key go.
  void Relâche(std::uint8_t touche) noexcept {
    état_[touche] = static_cast<std::uint8_t>(état_[touche] & ~kToucheEnfoncée);
  }

  [[nodiscard]] const EtatClavier& LitEtat() override { return état_; }
  void EcritEtat(const EtatClavier& état) override { état_ = état; }

 private:
  EtatClavier état_{};
};

}  // namespace zuma::sim
