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
  Ref(std::nullptr_t) noexcept {}
  Ref(std::shared_ptr<T> objet) noexcept : objet_(std::move(objet)) {}
  template <class U>
    requires std::is_convertible_v<U*, T*>
  Ref(const Ref<U>& autre) noexcept : objet_(autre.Partagé()) {}

  [[nodiscard]] T* operator->() const { return &**this; }
  [[nodiscard]] T& operator*() const {
    if (!objet_) throw Echec::ObjetAbsent();
    return *objet_;
  }
  /// True when there is an object, false on Nothing.
  [[nodiscard]] explicit operator bool() const noexcept { return static_cast<bool>(objet_); }
  [[nodiscard]] T* Brut() const noexcept { return objet_.get(); }
  [[nodiscard]] const std::shared_ptr<T>& Partagé() const noexcept { return objet_; }

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
  Pointeur(T* objet) noexcept : objet_(objet) {}

  [[nodiscard]] T* operator->() const { return &**this; }
  [[nodiscard]] T& operator*() const {
    if (objet_ == nullptr) throw Echec::ObjetAbsent();
    return *objet_;
  }
  [[nodiscard]] explicit operator bool() const noexcept { return objet_ != nullptr; }
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
  PointeurSuivi(T* objet, const Vie& vie) noexcept : objet_(objet), signe_(vie.signe_) {}
  explicit PointeurSuivi(T* objet) noexcept {
    if (objet != nullptr) *this = {objet, objet->LaVie()};
  }

  [[nodiscard]] T* operator->() const { return &**this; }
  [[nodiscard]] T& operator*() const {
    if (signe_.expired()) throw Echec::ObjetAbsent();
    return *objet_;
  }
  [[nodiscard]] T* Brut() const noexcept { return signe_.expired() ? nullptr : objet_; }

 private:
  T* objet_ = nullptr;
  std::weak_ptr<char> signe_;
};

}  // namespace zuma
