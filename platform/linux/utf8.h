#pragma once

#include <cstddef>
#include <string_view>

namespace zuma::linux_ {

/// Bytes of the character at the start of `texte`; 0 when what stands there is none.
[[nodiscard]] std::size_t LongueurUTF8(std::string_view texte) noexcept;

/// True when `texte` is well-formed UTF-8 (Unicode 15, table 3-7): no stray or missing
/// continuation byte, no overlong form, no surrogate, nothing past U+10FFFF.
[[nodiscard]] bool EstUTF8(std::string_view texte) noexcept;

}  // namespace zuma::linux_
