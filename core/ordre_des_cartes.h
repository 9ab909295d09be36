#pragma once

#include "tree/carte.h"

namespace zuma {

/// Serves the boards in their order, those that may wait behind the others: a stop does not wait
/// for the pauses of an instrument that stands before it.
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
