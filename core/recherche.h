#pragma once

#include <string_view>

#include "logic/entree_logique.h"
#include "logic/sortie_logique.h"
#include "sensors/capteur.h"
#include "tree/canal.h"

/// Searches of a frame by which objects resolve their references at link time. The first match in
/// collection order wins; no match gives Nothing.
namespace zuma::recherche {

/// The channel of that key, over all boards and blocks.
[[nodiscard]] CanalRef CanalDeClé(Chassis& chassis, std::string_view clé);
[[nodiscard]] CapteurRef CapteurDeLabel(Chassis& chassis, std::string_view label);
[[nodiscard]] EntréeLogiqueRef EntréeLogiqueDeLabel(Chassis& chassis, std::string_view label);
[[nodiscard]] SortieLogiqueRef SortieLogiqueDeLabel(Chassis& chassis, std::string_view label);
/// The first shared parameter of that key.
[[nodiscard]] Ref<ZED_Parametre> ParamètreDeClé(const ParamètresPartagés& paramètres,
                                                std::string_view clé);

}  // namespace zuma::recherche
