#pragma once

#include <optional>
#include <string_view>

#include "arret/montage.h"
#include "sim/pannes.h"

namespace zuma::arret {

/// When a stop comes, and from where; first those that an input tells.
enum class Occasion {
  Porte,         ///< a guard door opens and stays open: from inside a pass
  PorteBrève,    ///< it opens for one refresh: from inside a pass, once
  Ecouteur,      ///< a listener of an input asks for it
  EntrePasses,   ///< the operator asks for it between two passes
  UnDépart,      ///< while the output is being started, in a sleep of its device where it has one
  UnEtalonnage,  ///< while a calibration is being saved
};

/// What is done to a machine.
struct Rudesse {
  std::string_view nom;
  Occasion occasion = Occasion::Porte;
  double pasDePasse = 0.005;                 ///< seconds from one pass to the next
  double lenteur = 0;                        ///< microseconds that each device takes to answer
  std::optional<sim::GenreDePanne> panne{};  ///< on all lines, from the stop on
  bool câbleSorti = false;                   ///< at the stop, and back 5 s later
  bool voisinFigé = false;  ///< a watchdog board and a tester that hang, before it in the order
  bool commandeFautive = false;  ///< a command before it cannot work out its output
  bool oubli = false;            ///< its board loses what it was written, just behind the stop
  bool trouvéeEnMarche = false;  ///< it moves when the program starts, where it can
};

inline constexpr double kCâbleDehors = 5;  ///< seconds
inline constexpr std::string_view kVoisine = "Voisine";

}  // namespace zuma::arret
