#include "sensors/contrainte.h"

#include "base/valeur.h"

namespace zuma::contrainte {

double DepuisForce(double force, double surface, std::optional<double> facteur) {
  if (surface == 0) return 0;
  return facteur.value_or(1) * (force / surface * kMPaParKNParCm2);
}

double VersForce(double contrainte, double surface, std::optional<double> facteur) {
  return Divise(surface * contrainte, facteur.value_or(1) * kMPaParKNParCm2);
}

}  // namespace zuma::contrainte
