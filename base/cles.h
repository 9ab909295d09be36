#pragma once

#include <cstddef>
#include <string_view>

namespace zuma {

/// Comparison of collection keys: letter case is ignored, accents are not.
[[nodiscard]] bool MêmeClé(std::string_view a, std::string_view b) noexcept;
/// Relation of the containers that find by key: equal when `MêmeClé` says so.
struct MêmesClés {
  /// A text is looked for as it is, without a copy.
  using is_transparent = void;
  /// True when the keys are the same.
  bool operator()(std::string_view a, std::string_view b) const noexcept { return MêmeClé(a, b); }
};
/// Hash that goes with `MêmesClés`: the same for keys that differ in case alone.
struct EmpreinteDeClé {
  /// A text is looked for as it is, without a copy.
  using is_transparent = void;
  /// Hash of a key.
  std::size_t operator()(std::string_view clé) const noexcept;
};

}  // namespace zuma
