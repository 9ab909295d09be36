#pragma once

#include "tree/carte.h"

namespace zuma {

/// Serves the boards in their order, those that may wait for an answer or for the pauses of an
/// instrument behind the others, in the pass and at a stop, wherever they stand: what waits must
/// not delay the stops behind it.
template <class Cartes, class Travail>
void ParAttente(const Cartes& cartes, Travail&& travail) {
  using enum AttenteCarte;
  for (const AttenteCarte attente : {Aucune, Réponse, Pauses}) {
    for (const CarteRef& carte : cartes) {
      if (carte->Attente() == attente) travail(*carte);
    }
  }
}

}  // namespace zuma
