#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/verbes/terminal.h"
#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// One object, with its value aligned at the decimal point, unit and state.
[[nodiscard]] std::string LigneDeLObjet(const publication::ObjetPublié& objet,
                                        const publication::Mesure& mesure, const Terminal& terminal,
                                        bool changé);
/// The same for other programs.
[[nodiscard]] nlohmann::ordered_json ObjetEnJson(const publication::ObjetPublié& objet,
                                                 const publication::Mesure& mesure);
/// Frame, host and time of a sample in one line.
[[nodiscard]] std::string LigneDuChassis(const publication::Lecteur& lecteur,
                                         const publication::Echantillon& échantillon, bool vivante);
[[nodiscard]] nlohmann::ordered_json ChassisEnJson(const publication::Lecteur& lecteur,
                                                   const publication::Echantillon& échantillon,
                                                   bool vivante);
/// On the error output, of a frame that was left before its first pass.
void DitQuIlNYARien(const publication::Lecteur& lecteur);
/// As one line, with nothing that a terminal would obey.
void ImprimeEnJson(const nlohmann::ordered_json& json);

}  // namespace zuma::host
