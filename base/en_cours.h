#pragma once

namespace zuma {

/// Raises a flag for as long as it stands: the work that it marks is going on.
class EnCours {
 public:
  /// Raises `drapeau` now and lowers it at its end; the flag outlives this object.
  explicit EnCours(bool& drapeau) noexcept : drapeau_(drapeau) { drapeau_ = true; }
  ~EnCours() { drapeau_ = false; }
  EnCours(const EnCours&) = delete;
  EnCours& operator=(const EnCours&) = delete;

 private:
  bool& drapeau_;
};

}  // namespace zuma
