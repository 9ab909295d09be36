#pragma once

#include <memory>
#include <utility>

#include "base/echec.h"

namespace zuma {

/// Counted reference between objects of the model. `->` on Nothing is an ordinary failure (91),
/// never undefined behaviour: a missing collaborator shows in the error record.
template <class T>
class Ref {
 public:
  Ref() noexcept = default;
  /// Nothing.
  Ref(std::nullptr_t) noexcept {}
  /// Takes a share of the object; an empty pointer is Nothing.
  Ref(std::shared_ptr<T> objet) noexcept : objet_(std::move(objet)) {}
  /// The same object as its base class.
  template <class U>
    requires std::is_convertible_v<U*, T*>
  Ref(const Ref<U>& autre) noexcept : objet_(autre.Partagé()) {}

  ///@{
  /// The object; Nothing fails with 91, at the line of the guarded operation.
  [[nodiscard]] T* operator->() const { return &**this; }
  [[nodiscard]] T& operator*() const {
    if (!objet_) throw Echec::ObjetAbsent();
    return *objet_;
  }
  ///@}
  /// True when there is an object, false on Nothing.
  [[nodiscard]] explicit operator bool() const noexcept { return static_cast<bool>(objet_); }
  /// The object without a check, or null; valid for as long as somebody holds it.
  [[nodiscard]] T* Brut() const noexcept { return objet_.get(); }
  /// The shared owner, for who keeps the object by other means.
  [[nodiscard]] const std::shared_ptr<T>& Partagé() const noexcept { return objet_; }

  /// The same object, or both Nothing.
  [[nodiscard]] friend bool operator==(const Ref& a, const Ref& b) noexcept {
    return a.objet_ == b.objet_;
  }

 private:
  std::shared_ptr<T> objet_;
};

/// Builds an object and the first reference to it.
template <class T, class... Args>
[[nodiscard]] Ref<T> Crée(Args&&... args) {
  return Ref<T>(std::make_shared<T>(std::forward<Args>(args)...));
}

/// Plain pointer to something that outlives its user (a platform service), with the same failure on
/// Nothing as `Ref`.
template <class T>
class Pointeur {
 public:
  Pointeur() noexcept = default;
  /// Holds nothing alive: `objet` outlives this pointer.
  Pointeur(T* objet) noexcept : objet_(objet) {}

  ///@{
  /// The object; Nothing fails with 91.
  [[nodiscard]] T* operator->() const { return &**this; }
  [[nodiscard]] T& operator*() const {
    if (objet_ == nullptr) throw Echec::ObjetAbsent();
    return *objet_;
  }
  ///@}
  /// False on Nothing.
  [[nodiscard]] explicit operator bool() const noexcept { return objet_ != nullptr; }
  /// The object without a check, or null.
  [[nodiscard]] T* Brut() const noexcept { return objet_; }

 private:
  T* objet_ = nullptr;
};

/// Life of an object that others point at without holding it.
class Vie {
 public:
  Vie() : signe_(std::make_shared<char>()) {}
  Vie(const Vie&) = delete;
  Vie& operator=(const Vie&) = delete;
  /// The object is going away: nobody finds it any more.
  void Finit() noexcept { signe_ = nullptr; }

 private:
  template <class T>
  friend class PointeurSuivi;
  std::shared_ptr<char> signe_;
};

/// Plain pointer to something that may go first (a parent): Nothing once its life, or that of its
/// owner, has ended. Costs one load more than a plain one.
template <class T>
class PointeurSuivi {
 public:
  PointeurSuivi() noexcept = default;
  /// Points at `objet` for as long as `vie` lasts.
  PointeurSuivi(T* objet, const Vie& vie) noexcept : objet_(objet), signe_(vie.signe_) {}
  /// Points at an object that has a `LaVie()` of its own; null is Nothing.
  explicit PointeurSuivi(T* objet) noexcept {
    if (objet != nullptr) *this = {objet, objet->LaVie()};
  }

  ///@{
  /// The object; Nothing, or one that has ended, fails with 91.
  [[nodiscard]] T* operator->() const { return &**this; }
  [[nodiscard]] T& operator*() const {
    if (signe_.expired()) throw Echec::ObjetAbsent();
    return *objet_;
  }
  ///@}
  /// The object, or null once it has ended.
  [[nodiscard]] T* Brut() const noexcept { return signe_.expired() ? nullptr : objet_; }

 private:
  T* objet_ = nullptr;
  std::weak_ptr<char> signe_;
};

}  // namespace zuma
