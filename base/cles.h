#pragma once

#include <cstddef>
#include <string_view>

namespace zuma {

/// Comparison of collection keys: letter case is ignored, accents are not.
[[nodiscard]] bool MêmeClé(std::string_view a, std::string_view b) noexcept;
/// The same as a relation, and a hash that goes with it.
struct MêmesClés {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept { return MêmeClé(a, b); }
};
struct EmpreinteDeClé {
  using is_transparent = void;
  std::size_t operator()(std::string_view clé) const noexcept;
};

}  // namespace zuma
