#pragma once

#include <string>

namespace zuma::host {

/// Writes a configuration database with the complete schema and the demo frames, and the shared
/// parameters beside it. Throws `MauvaisUsage` for a file that is there already or cannot be
/// written; parameters that are there stay.
void EcritLaDémonstration(const std::string& fichier);

}  // namespace zuma::host
