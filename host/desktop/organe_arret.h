#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "host/desktop/textes.h"

class QPushButton;

namespace zuma::host {

/// What fires the stop by hand, wherever the window system sends keys and clicks in this program:
/// the key, over modal dialogs and menus too, and the buttons. Dialogs and forms get a button of
/// their own: a modal one keeps the pointer from every other window, and any may hide it.
class OrganeDArrêt : public QObject {
 public:
  static constexpr Qt::Key kTouche = Qt::Key_F12;

  struct Actes {
    std::function<void()> arrête;
    std::function<bool()> déclenchée;
    /// The key or a button was pressed or let go.
    std::function<void()> changé;
  };

  OrganeDArrêt(const Textes& textes, Actes actes);
  ~OrganeDArrêt() override;

  /// A button that fires the stop as soon as it is pressed.
  [[nodiscard]] QPushButton* Bouton(QWidget* mère);
  /// The key or a button is held down: the operator still asks for the stop.
  [[nodiscard]] bool Tenu() const;

 protected:
  bool eventFilter(QObject* objet, QEvent* évènement) override;

 private:
  void Presse();
  void Touche(bool enfoncée, bool répétée);
  void ClicSousUnMenu(const QPoint& où);
  void LâcheLaSouris();
  void Equipe(QObject& objet);

  const Textes& textes_;
  Actes actes_;
  std::vector<QPointer<QPushButton>> boutons_;
  bool toucheTenue_ = false;
  bool sourisTenue_ = false;  ///< wherever the pointer is by now
};

}  // namespace zuma::host
