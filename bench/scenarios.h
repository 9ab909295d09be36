#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace zuma::banc {

/// Something to measure, made ready.
class Mesure {
 public:
  Mesure() = default;
  virtual ~Mesure() = default;
  Mesure(const Mesure&) = delete;
  Mesure& operator=(const Mesure&) = delete;

  /// Between two turns: time goes on and terminals move. Cheap beside a turn, and left out of the
  /// instructions counted.
  virtual void Avant() {}
  /// What is measured.
  virtual void Tour() = 0;
  /// Time on the simulated clock, microseconds: it moves with each look at it, and so with the
  /// busy waits of the boards.
  [[nodiscard]] virtual double Horloge() const { return 0; }
  /// What the library complained of: a figure taken while something fails is worth nothing.
  [[nodiscard]] virtual std::string Plaintes() const = 0;
};

struct Scénario {
  std::string_view nom;
  std::string_view texte;
  std::unique_ptr<Mesure> (*prépare)();
};

[[nodiscard]] std::span<const Scénario> Scénarios();

/// One turn; instructions are counted inside this function and nowhere else.
void FaitUnTour(Mesure& mesure);

/// Prints how long a stop takes, from the limit crossed to the last output at rest. False when an
/// output did not come to rest or the library complained.
[[nodiscard]] bool RapportDArrêt();

}  // namespace zuma::banc
