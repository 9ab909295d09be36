#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Compensation of a servo-valve. The flow through the valve goes with the square root of the
/// pressure drop across it (orifice equation): the command is multiplied by a coefficient that is
/// 1 when the use pressure is half the supply pressure, and an offset that moves with the use
/// pressure is added.
namespace zuma::servo {

/// Bounds of the coefficient.
inline constexpr double kCoefMini = 0.7;
inline constexpr double kCoefMaxi = 10;

/// Pressures of the two sensors, in one unit; none for a sensor that is not there.
struct Pressions {
  std::optional<double> alimentation;
  std::optional<double> utilisation;
};

/// What the pressures give: the coefficient, and the pressures that it was computed from.
struct Compensation {
  double coefficient = 1;
  double Palim = 0;
  double Putil = 0;
};

/// Coefficient for a command of `unités`: above 0 the valve passes from supply to use, otherwise
/// from use to return. Negative pressures count as 0. Without a supply sensor it is 1, and the use
/// pressure counts as 0.
[[nodiscard]] Compensation CalculeCoefServo(double unités, const Pressions& pressions);

/// Offset of the valve: `fixe` units, and `pente` units per unit of the use pressure.
struct Décalage {
  double fixe = 0;
  double pente = 0;

  [[nodiscard]] double Pour(const Compensation& c) const { return c.Putil * pente + fixe; }
};

[[nodiscard]] double Corrige(double unités, const Compensation& c, const Décalage& décalage);
/// The inverse: the command that gives `corrigée`.
[[nodiscard]] double Décorrige(double corrigée, const Compensation& c, const Décalage& décalage);

/// One refresh of a servo command, for diagnosis.
struct Relevé {
  double unités = 0;
  Compensation compensation;
  double décalage = 0;
  double corrigée = 0;
  double points = 0;
};

/// Columns of the journal.
inline constexpr std::string_view kEntêteDuJournal =
    " Commande en unité ; Palim ; Putil ; Sens ; Coeff ; Offset ; Commande corrigee ; Commande en "
    "points";
/// One line of the journal, each value followed by ";". The direction is 1 from supply to use, -1
/// to return.
[[nodiscard]] std::string LigneDuJournal(const Relevé& relevé, char séparateur = ',');

}  // namespace zuma::servo
