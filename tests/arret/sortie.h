#pragma once

#include <cstdint>
#include <string_view>

#include "arret/montage.h"

namespace zuma::arret {

/// One kind of output.
struct Sortie {
  std::string_view nom;
  /// Board, block and object of the output in the frame.
  void (*monte)(Lignes& lignes, const Sortie& sortie);
  /// The terminal of its twin is where a stop puts it.
  bool (*auRepos)(Montage& montage);
  /// Seconds from the stop to the terminal at rest in kind conditions, at most.
  double délai = 0;
  std::string_view type{};         ///< of its block
  std::string_view driver{};       ///< of its block
  std::string_view driverCarte{};  ///< of its board
  /// Leaves the device moving before the program starts; none where a start puts it to rest.
  void (*enMarcheAvant)(Montage& montage) = nullptr;
  /// Takes its link away, or gives it back; none: every line and the USB cable.
  void (*débranche)(Montage& montage, bool débranchée) = nullptr;
  /// Sets it going; none: its command to 50, its logic output to active.
  void (*metEnRoute)(Montage& montage) = nullptr;

  /// A line, a bus or a watchdog board stands between it and the frame, and no block of a board.
  [[nodiscard]] constexpr bool EstUnLien() const { return type.empty(); }
};

}  // namespace zuma::arret
