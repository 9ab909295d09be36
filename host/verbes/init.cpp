#include <cstdio>

#include "host/demonstration.h"
#include "host/verbes/verbes.h"

namespace zuma::host {

int Init(const OptionsInit& options) {
  EcritLaDémonstration(options.fichier);
  std::printf(
      "%s written: every table of the system, and the demo frames 1 to 5.\n"
      "Next: zuma check %s --frame 1, then zuma run %s --frame 1 --sim\n",
      options.fichier.c_str(), options.fichier.c_str(), options.fichier.c_str());
  return kBon;
}

}  // namespace zuma::host
