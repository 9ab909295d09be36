#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/chassis.h"
#include "host/ecrivain.h"
#include "host/machine.h"
#include "host/suivi_de_l_arret.h"
#include "host/verbes/terminal.h"
#include "platform/linux/securite.h"

namespace zuma::host {

/// What a view shows, at one moment.
struct Instantané {
  Chassis& chassis;
  const Machine& machine;
  const linux_::Securite& sécurité;
  const SuiviDeLArrêt& suivi;
  double secondes;
  std::int32_t capteurChoisi;                           ///< rank, from 0
  double plusLonguePasse;                               ///< milliseconds, since the start
  std::string_view panne{};                             ///< fault put on by hand; empty for none
  std::optional<EtatDEnregistrement> enregistrement{};  ///< none: nothing is recorded
};

/// The frame as a person watches it: stop, sensors, then boards, blocks and channels.
/// Its head stays; `haut` is the first line shown below it, and is brought back to the last page.
[[nodiscard]] std::vector<std::string> VueVivante(const Instantané& vue, const Terminal& terminal,
                                                  std::size_t& haut);

/// The frame in one line: stop, how many sensors are well, the first of them, recording.
[[nodiscard]] std::string VueEnResume(const Instantané& vue);

/// The frame as lines for a file or another program, one a sensor or channel, fields between bars.
[[nodiscard]] std::vector<std::string> VueEnLignes(const Instantané& vue);

/// The frame as one line of JSON.
[[nodiscard]] std::string VueEnJson(const Instantané& vue);

}  // namespace zuma::host
