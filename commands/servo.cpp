#include "commands/servo.h"

#include <algorithm>
#include <cmath>

#include "base/valeur.h"

namespace zuma::servo {
namespace {

// Comparisons as they stand, so that a pressure that is no number stays one and shows.
double AuMoinsZéro(double pression) {
  return pression < 0 ? 0 : pression;
}

double Coefficient(double chute, double Palim) {
  if (Palim == 0) return 1;
  if (chute <= 0) return kCoefMaxi;
  return 1 / std::sqrt(2 * chute / Palim);
}

}  // namespace

Compensation CalculeCoefServo(double unités, const Pressions& pressions) {
  Compensation c;
  if (!pressions.alimentation) return c;
  c.Putil = AuMoinsZéro(pressions.utilisation.value_or(0));
  c.Palim = AuMoinsZéro(*pressions.alimentation);
  const double chute = unités > 0 ? c.Palim - c.Putil : c.Putil;
  c.coefficient = std::clamp(Coefficient(chute, c.Palim), kCoefMini, kCoefMaxi);
  return c;
}

double Corrige(double unités, const Compensation& c, const Décalage& décalage) {
  return c.coefficient * unités + décalage.Pour(c);
}

double Décorrige(double corrigée, const Compensation& c, const Décalage& décalage) {
  return (corrigée - décalage.Pour(c)) / c.coefficient;
}

std::string LigneDuJournal(const Relevé& relevé, char séparateur) {
  std::string ligne;
  const Compensation& c = relevé.compensation;
  const double sens = relevé.unités > 0 ? 1 : -1;
  for (const double valeur : {relevé.unités, c.Palim, c.Putil, sens, c.coefficient, relevé.décalage,
                              relevé.corrigée, relevé.points}) {
    ligne += TexteDeNombre(valeur, séparateur);
    ligne += ';';
  }
  return ligne;
}

}  // namespace zuma::servo
