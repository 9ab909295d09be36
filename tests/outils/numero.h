#pragma once

#include "base/echec.h"

namespace zuma::essai {

/// Number of the failure of `travail`, 0 when it succeeds.
template <class Travail>
int NuméroDe(Travail&& travail) {
  try {
    travail();
  } catch (const Echec& e) {
    return e.NuméroErreur();
  }
  return 0;
}

}  // namespace zuma::essai
