#include <cstdio>

#include "core/echec.h"
#include "host/verbes.h"
#include "platform/linux/base_creation.h"
#include "platform/linux/demo.h"

namespace zuma::host {

int Init(const OptionsInit& options) {
  try {
    linux_::CréeBase(options.fichier, linux_::LignesDeDémonstration());
  } catch (const Echec& e) {
    std::fprintf(stderr, "zuma: %s\n", e.what());
    return kMauvaisUsage;
  }
  std::printf(
      "%s written: every table of the system, and the demo frame 1.\n"
      "Next: zuma check %s --frame 1, then zuma run %s --frame 1 --sim\n",
      options.fichier.c_str(), options.fichier.c_str(), options.fichier.c_str());
  return kBon;
}

}  // namespace zuma::host
