#pragma once

#include <string>
#include <vector>

#include "platform/linux/parametres.h"

namespace zuma::host {

/// File of a database's shared parameters, beside it: one line "index = value" each.
[[nodiscard]] std::string FichierDesParamètres(const std::string& base);

/// The parameters of the file beside `base`, then those of `donnés` ("index=value"), which win. A
/// file that is not there gives none; a line that is no parameter is misuse, and named.
[[nodiscard]] linux_::Parametres LitLesParamètres(const std::string& base,
                                                  const std::vector<std::string>& donnés);

}  // namespace zuma::host
