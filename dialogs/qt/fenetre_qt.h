#pragma once

#include <QWidget>
#include <functional>
#include <utility>

#include "platform/fenetres.h"

namespace zuma::qt {

/// A window of a Qt host as the library sees it. The widget outlives it.
class FenêtreQt final : public FenêtreHôte {
 public:
  /// `rafraichit` shows the host's tables anew; without one a command's calibration ends in the
  /// failure of `rafraichitTout`.
  explicit FenêtreQt(QWidget& widget, std::function<void()> rafraichit = {})
      : widget_(widget), rafraichit_(std::move(rafraichit)) {}

  [[nodiscard]] std::uintptr_t hwnd() const override { return widget_.window()->winId(); }
  void rafraichitTout() override {
    if (!rafraichit_) return FenêtreHôte::rafraichitTout();
    rafraichit_();
  }

 private:
  QWidget& widget_;
  std::function<void()> rafraichit_;
};

}  // namespace zuma::qt
