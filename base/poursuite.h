#pragma once

#include <exception>
#include <utility>

namespace zuma {

/// Steps that must all be tried, whatever becomes of those before: one output that fails must not
/// keep the others from being put to rest. `Termine` hands on the first failure. Costs nothing
/// while none fails.
class Poursuite {
 public:
  /// True when the step did not fail.
  template <class Pas>
  bool operator()(Pas&& pas) {
    try {
      std::forward<Pas>(pas)();
      return true;
    } catch (...) {
      if (!premier_) premier_ = std::current_exception();
      return false;
    }
  }
  /// Throws the first failure of the steps; nothing when all went well.
  void Termine() const {
    if (premier_) std::rethrow_exception(premier_);
  }

 private:
  std::exception_ptr premier_;
};

}  // namespace zuma
