#pragma once

#include "base/poursuite.h"
#include "tree/carte.h"

/// What the operations of several drivers share.
namespace zuma::pilotes {

/// Driver object of class `Board` for the board at `base`.
template <class Board>
Pilote& Ouvre(Carte& carte, std::uint16_t base) {
  return carte.PiloteDe<Board>(base);
}

/// Refresh of a block that goes channel by channel.
inline void RafraîchitLesCanaux(Fonction& bloc) {
  Poursuite chacun;
  for (const CanalRef& canal : bloc.LesCanaux()) chacun([&] { canal->MetàJour(); });
  chacun.Termine();
}

}  // namespace zuma::pilotes
