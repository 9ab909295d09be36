#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/ref.h"
#include "tree/registre_des_drivers.h"

namespace zuma::host {

/// The drivers that a frame may name: the library's own, those of the libraries `fichiers`, which
/// stay loaded as long as the process, and `lignes`, which outlive the registry. Throws
/// `MauvaisUsage`, with the file, what was found there and what to do, for a file that is not there
/// or no such library (`zuma_drivers`, see tree/ligne_driver.h), for one made for another form of
/// the interface, and for a value or text that another driver has; nothing stays loaded then.
[[nodiscard]] Ref<RegistreDesDrivers> LesDrivers(const std::vector<std::string>& fichiers,
                                                 std::span<const LigneDriver> lignes = {});

}  // namespace zuma::host
