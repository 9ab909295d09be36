#pragma once

#include <span>

#include "base/ref.h"
#include "tree/registre_des_drivers.h"

namespace zuma {

/// The library's own drivers, in the order of their values.
[[nodiscard]] std::span<const LigneDriver> DriversDeZuma() noexcept;

/// A registry that holds them, for `Plateforme::drivers`; a host adds its own.
[[nodiscard]] Ref<RegistreDesDrivers> CréeLesDrivers();

}  // namespace zuma
