#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Compensation of a servo-valve. The flow through the valve goes with the square root of the
/// pressure drop across it (orifice equation): the command is multiplied by a coefficient that is
/// 1 when the use pressure is half the supply pressure, and an offset that moves with the use
/// pressure is added.
namespace zuma::servo {

///@{
/// Bounds of the coefficient.
inline constexpr double kCoefMini = 0.7;
inline constexpr double kCoefMaxi = 10;
///@}

/// Pressures of the two sensors, in one unit; none for a sensor that is not there.
struct Pressions {
  std::optional<double> alimentation;  ///< supply sensor
  std::optional<double> utilisation;   ///< use sensor
};

/// What the pressures give: the coefficient, and the pressures that it was computed from.
struct Compensation {
  double coefficient = 1;  ///< 0.7 to 10
  double Palim = 0;        ///< supply pressure
  double Putil = 0;        ///< use pressure
};

/// Coefficient for a command of `unités`: above 0 the valve passes from supply to use, otherwise
/// from use to return. Negative pressures count as 0. Without a supply sensor it is 1, and the use
/// pressure counts as 0.
[[nodiscard]] Compensation CalculeCoefServo(double unités, const Pressions& pressions);

/// Offset of the valve: `fixe` units, and `pente` units per unit of the use pressure.
struct Décalage {
  double fixe = 0;   ///< units
  double pente = 0;  ///< units per unit of the use pressure

  /// Offset at these pressures, in units.
  [[nodiscard]] double Pour(const Compensation& c) const { return c.Putil * pente + fixe; }
};

/// What goes to the valve for a command of `unités`: times the coefficient, plus the offset.
[[nodiscard]] double Corrige(double unités, const Compensation& c, const Décalage& décalage);
/// The inverse: the command that gives `corrigée`.
[[nodiscard]] double Décorrige(double corrigée, const Compensation& c, const Décalage& décalage);

/// One refresh of a servo command, for diagnosis.
struct Relevé {
  double unités = 0;          ///< command asked for
  Compensation compensation;  ///< coefficient and pressures
  double décalage = 0;        ///< offset, units
  double corrigée = 0;        ///< command sent, units
  double points = 0;          ///< command sent, points
};

/// Columns of the journal.
inline constexpr std::string_view kEntêteDuJournal =
    " Commande en unité ; Palim ; Putil ; Sens ; Coeff ; Offset ; Commande corrigee ; Commande en "
    "points";
/// One line of the journal, each value followed by ";". The direction is 1 from supply to use, -1
/// to return.
[[nodiscard]] std::string LigneDuJournal(const Relevé& relevé, char séparateur = ',');

}  // namespace zuma::servo
