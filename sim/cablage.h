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
  Armé,
  PorteFermée,
  FinDeCourseHaut,
  FinDeCourseBas,
  BoutonAU,
  Servovalve,
  Pompe,
  Distributeur,
};

/// One wire: a channel by its key, a quantity, and the quantity that makes 10 V on an analog one.
struct Fil {
  std::string_view canal;
  Grandeur grandeur;
  double pleineEchelle = 1;
};

}  // namespace zuma::sim
