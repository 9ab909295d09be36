#pragma once

#include <memory>
#include <type_traits>

namespace zuma {

/// What a driver keeps of one block or one channel from pass to pass. Each driver has its own
/// class.
class EtatPilote {
 public:
  virtual ~EtatPilote() = default;
};

/// Holds the state of the driver that serves an object. The class of the state is known by a mark
/// of its own, which costs a pass one comparison.
class TientUnEtat {
 public:
  /// The state of class `T`, made on first use. A state of another class is that of another driver,
  /// and goes.
  template <class T>
    requires std::is_base_of_v<EtatPilote, T>
  [[nodiscard]] T& Etat() {
    if (marque_ != &kMarque<T>) {
      état_ = std::make_unique<T>();
      marque_ = &kMarque<T>;
    }
    return static_cast<T&>(*état_);
  }
  /// The same for who has nothing to do without one: nullptr, and none is made.
  template <class T>
    requires std::is_base_of_v<EtatPilote, T>
  [[nodiscard]] T* EtatOuRien() noexcept {
    return marque_ == &kMarque<T> ? static_cast<T*>(état_.get()) : nullptr;
  }

 private:
  template <class T>
  static constexpr char kMarque = 0;

  std::unique_ptr<EtatPilote> état_;
  const char* marque_ = nullptr;
};

}  // namespace zuma
