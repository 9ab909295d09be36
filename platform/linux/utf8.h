#pragma once

#include <string_view>

namespace zuma::linux_ {

/// True when `texte` is well-formed UTF-8 (Unicode 15, table 3-7): no stray or missing
/// continuation byte, no overlong form, no surrogate, nothing past U+10FFFF.
[[nodiscard]] bool EstUTF8(std::string_view texte) noexcept;

}  // namespace zuma::linux_
