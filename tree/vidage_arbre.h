#pragma once

#include <string_view>

#include "base/vidage.h"
#include "tree/canal.h"

namespace zuma {

/// Name of the channel of a sensor, a command or a logic object. Without one the line stands all
/// the same, with an empty name: a dump is made because something is missing.
inline void VideLeCanal(BlocDeVidage& bloc, const CanalRef& canal) {
  bloc.Texte("Canal connecté :               ", canal ? std::string_view(canal->Nom()) : "");
}

}  // namespace zuma
