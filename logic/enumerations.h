#pragma once

#include <cstdint>

namespace zuma {

/// State of a logic input or output.
enum class ENUM_ETAT_LOGIQUE : std::int32_t { Actif = 0, Inactif = 1, Inconnu = 99 };

/// Which state of a logic input raises an emergency stop.
enum class ENUM_ETAT_AU_LOGIQUE : std::int32_t { Aucun = 0, Activé = 1, Désactivé = 2 };

}  // namespace zuma
