#pragma once

#include "host/verbes/verbes.h"

namespace zuma::host {

/// Shows a frame in a desktop window until it is closed.
int Desktop(const OptionsDesktop& options);

}  // namespace zuma::host
