#pragma once

#include "commands/commande.h"
#include "logic/entree_logique.h"
#include "logic/sortie_logique.h"
#include "logic/watchdog.h"
#include "publication/lecture/lecteur.h"
#include "sensors/capteur.h"
#include "tree/canal.h"

namespace zuma::publication {

///@{
/// What is to be told of an object now: the same for a sample and for whoever holds the object.
[[nodiscard]] Mesure MesureDe(const Capteur& capteur);
[[nodiscard]] Mesure MesureDe(const Commande& commande);
[[nodiscard]] Mesure MesureDe(const EntréeLogique& entrée);
[[nodiscard]] Mesure MesureDe(const SortieLogique& sortie);
[[nodiscard]] Mesure MesureDe(const Watchdog& chien);
[[nodiscard]] Mesure MesureDe(const Canal& canal);
///@}

/// 1 for on, 0 for off, no number for a source that tells nothing: as people plot it.
[[nodiscard]] double NiveauDe(ENUM_ETAT_LOGIQUE état);

}  // namespace zuma::publication
