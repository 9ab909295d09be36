#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "publication/lecture/lecteur.h"

namespace zuma::host {

/// The publication that a person means by `où`: its file, a database whose frame is published (the
/// one that runs before one that ran), or nothing for the only frame that runs on this machine.
/// Throws `MauvaisUsage`, and says what there is.
[[nodiscard]] std::string LaPublication(const std::string& où, std::optional<std::int32_t> chassis);

/// The only one that runs, or else the last one that a dead host left. Throws `MauvaisUsage`.
[[nodiscard]] std::string LaDernièreBoîte();

/// Ranks of the objects of these names, in their order. Throws `MauvaisUsage` for a name that is
/// not there, with the nearest ones.
[[nodiscard]] std::vector<std::size_t> ObjetsNommés(const publication::ChassisPublié& chassis,
                                                    const std::vector<std::string>& noms);
/// All but the channels: what a person looks at first.
[[nodiscard]] std::vector<std::size_t> ObjetsDAbord(const publication::ChassisPublié& chassis);

/// Seconds since the last sample, by the clock that all processes of the machine share.
[[nodiscard]] double SecondesDepuis(const publication::Echantillon& échantillon);

}  // namespace zuma::host
