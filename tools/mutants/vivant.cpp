// Linked to the lowest library of the mutated sources.
#include <cstdlib>

#include "base/mutants.h"

namespace zuma_mutants {

bool atteints[kAuPlus];
int vivant = [] {
  const char* mutant = std::getenv("ZUMA_MUTANT");
  return mutant == nullptr ? 0 : std::atoi(mutant);
}();

}  // namespace zuma_mutants
