#pragma once

#include <tuple>
#include <vector>

namespace zuma::essai {

/// Rows of a test's table, taken apart in the head of its loop:
/// `for (const auto& [entrée, attendu] : Cas<double, int>{{2.5, 2}, {3.5, 4}})`.
template <class... T>
using Cas = std::vector<std::tuple<T...>>;

}  // namespace zuma::essai
