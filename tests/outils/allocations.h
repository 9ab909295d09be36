#pragma once

#include <cstdint>

namespace zuma::essai {

/// Number of allocations of this thread since its start. A refresh must not move it.
[[nodiscard]] std::int64_t Allocations() noexcept;

}  // namespace zuma::essai
