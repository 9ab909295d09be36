#pragma once

namespace zuma {

class Carte;

/// Longest time, in seconds, for which one pass waits for this board, when nothing on it answers or
/// its machine is started: summed over its channels and itself, from the rows of
/// their drivers. 0 for boards that a pass never waits for, and for those whose library alone
/// knows.
[[nodiscard]] double RetenueDUnePasse(Carte& carte);

}  // namespace zuma
