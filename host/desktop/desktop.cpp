#include "host/desktop/desktop.h"

namespace zuma::host {

int Desktop(const OptionsDesktop&) { return kMauvaisUsage; }

}  // namespace zuma::host
