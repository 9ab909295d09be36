#pragma once

#include <QWidget>
#include <functional>

#include "host/desktop/organe_arret.h"
#include "host/desktop/textes.h"
#include "host/suivi_de_l_arret.h"
#include "platform/linux/securite.h"

class QLabel;
class QPushButton;

namespace zuma::host {

/// The stop: its button, its causes in plain words, and its acknowledgement, which is refused for
/// as long as the stop is held down, and for a cause that is not shown yet.
class VoletArrêt : public QWidget {
 public:
  VoletArrêt(const linux_::Securite& sécurité, const SuiviDeLArrêt& suivi, const Textes& textes,
             std::function<void()> arrête, std::function<bool()> acquitte);

  void Rafraîchit();

 private:
  [[nodiscard]] QStringList LesCauses() const;

  const linux_::Securite& sécurité_;
  const SuiviDeLArrêt& suivi_;
  const Textes& textes_;
  QLabel* bandeau_;
  QPushButton* acquitte_;
  OrganeDArrêt organe_;
  std::size_t montrées_ = 0;  ///< causes that the operator can see
  bool refusé_ = false;       ///< the last acknowledgement came while the stop was held down
};

}  // namespace zuma::host
