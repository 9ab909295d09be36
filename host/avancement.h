#pragma once

#include <chrono>
#include <string_view>

namespace zuma::host {

/// Tells on the standard error how far a long work has come: on a terminal alone, from half a
/// second on, five times a second. Its line goes away with it.
class Avancement {
 public:
  Avancement();
  ~Avancement();
  Avancement(const Avancement&) = delete;
  Avancement& operator=(const Avancement&) = delete;
  /// `part` is what is done, 0 to 1, and `quoi` what is looked at.
  void Montre(std::string_view quoi, double part);

 private:
  bool terminal_;
  bool montré_ = false;
  std::chrono::steady_clock::time_point prochain_;
};

}  // namespace zuma::host
