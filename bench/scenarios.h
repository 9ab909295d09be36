#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "bench/banc.h"

namespace zuma::banc {

/// What is measured on a frame made ready: a pass, unless a derived class says otherwise.
class Mesure {
 public:
  /// `période`: microseconds between two turns; with 0 nothing moves between them.
  Mesure(const Lignes& lignes, double période) : Mesure(lignes.Toutes(), kChassis, période) {}
  /// The same on frame `chassis` of a whole database.
  Mesure(const std::vector<linux_::LigneDeBase>& lignes, std::int32_t chassis, double période);
  virtual ~Mesure() = default;
  Mesure(const Mesure&) = delete;
  Mesure& operator=(const Mesure&) = delete;

  /// Between two turns: time goes on and terminals move. Cheap beside a turn, and left out of the
  /// instructions counted.
  void Avant();
  virtual void Tour() { banc.LeChassis().MetàJour(); }

  /// Allocations so far that are none of the library's: those of the devices on the lines. Before
  /// the frame, whose end still talks to them.
  std::int64_t allocationsDesJumeaux = 0;
  Banc banc;

 private:
  double période_;
};

struct Scénario {
  std::string_view nom;
  std::string_view texte;
  std::unique_ptr<Mesure> (*prépare)();
};

[[nodiscard]] std::span<const Scénario> Scénarios();

/// One turn; a profiler counts inside this function and nowhere else.
void FaitUnTour(Mesure& mesure);

/// Prints how long a stop takes, from the limit crossed to the last output at rest. False when an
/// output did not come to rest or the library complained.
[[nodiscard]] bool RapportDArrêt();

/// Prints what the publication costs a pass, and what sixteen readers at full speed cost it. False
/// when that is more than half a microsecond, or more than 5 % of the 99th percentile.
[[nodiscard]] bool RapportDePublication();

/// Prints the longest pass of each driver, its device well and silent, as a table of Markdown.
void RapportDesPasses();

/// Prints, for each kind of output under each unkindness, how long its terminal took to come to
/// rest and when it was told as not reached. False when a cell shows neither.
[[nodiscard]] bool ImprimeLaTableDArrêt();

}  // namespace zuma::banc
