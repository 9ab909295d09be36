#pragma once

#include <QWidget>
#include <functional>

#include "host/desktop/textes.h"
#include "platform/linux/securite.h"

class QLabel;
class QPushButton;

namespace zuma::host {

/// The stop: its button, its causes in plain words, and its acknowledgement. Its key works wherever
/// the window system sends keys in this program, modal dialogs and menus included.
class VoletArrêt : public QWidget {
 public:
  static constexpr Qt::Key kTouche = Qt::Key_F12;

  VoletArrêt(const linux_::Securite& sécurité, const Textes& textes, std::function<void()> arrête,
             std::function<bool()> acquitte);
  ~VoletArrêt() override;

  void Rafraîchit();

 protected:
  bool eventFilter(QObject* objet, QEvent* évènement) override;

 private:
  [[nodiscard]] QString TexteDesCauses() const;

  const linux_::Securite& sécurité_;
  const Textes& textes_;
  std::function<void()> arrête_;
  QPushButton* bouton_;
  QLabel* bandeau_;
  QPushButton* acquitte_;
};

}  // namespace zuma::host
