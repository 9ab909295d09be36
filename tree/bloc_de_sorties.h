#pragma once

#include "tree/fonction.h"

namespace zuma {

/// The channels of the block drive something.
[[nodiscard]] inline bool EstUneSortie(const Fonction& bloc) {
  return bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesLogiques ||
         bloc.TypeDeFonction() == ENUM_TYPE_FONCTION::FctSortiesAnalogiques;
}

}  // namespace zuma
