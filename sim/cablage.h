#pragma once

#include <cstdint>
#include <string_view>

namespace zuma::sim {

/// What a channel of a frame is wired to on the press.
enum class Grandeur : std::uint8_t {
  Force,                 ///< newtons
  Position,              ///< metres
  PressionAlimentation,  ///< pascals
  PressionUtilisation,   ///< pascals
  Raccourcissement,      ///< metres
  Armé,                  ///< the safety chain lets oil through
  PorteFermée,           ///< door closed
  FinDeCourseHaut,       ///< piston at its upper end
  FinDeCourseBas,        ///< piston at its lower end
  BoutonAU,              ///< emergency button pressed
  Servovalve,            ///< opening, -1 to 1
  Pompe,                 ///< pump
  Distributeur,          ///< distributor
};

/// One wire: a channel by its key, a quantity, and the quantity that makes 10 V on an analog one.
struct Fil {
  std::string_view canal;    ///< key of the channel
  Grandeur grandeur;         ///< what it is wired to
  double pleineEchelle = 1;  ///< 10 V, in the unit of the quantity
};

}  // namespace zuma::sim
