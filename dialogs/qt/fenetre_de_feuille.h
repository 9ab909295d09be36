#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

#include "dialogs/qt/mots.h"

namespace zuma {
class FenêtreHôte;
}

namespace zuma::qt {

/// Why a form must change nothing for now, in the operator's words; empty while it may.
using Refus = std::function<QString()>;

/// A window that stays beside the host's own and shows a living form. It has the form refreshed
/// periodically, goes away with it, and tells it when it is closed. Closed, it deletes itself; its
/// parent may end first, and the form's object at any time.
class FenêtreDeFeuille : public QWidget {
 public:
  /// What a window needs of its form; all of it stays callable for as long as the window stands.
  struct Suivi {
    std::function<bool()> montrée;  ///< false once the form is to leave the screen
    std::function<void()> timer;    ///< the periodic refresh, every `période` seconds
    double période = 1;             ///< seconds between two calls of `timer`
    std::function<void()> fermée;   ///< the window was closed without one of the form's buttons
  };

  ~FenêtreDeFeuille() override;

  /// Shows what the form now holds, as a child of `mère`, in front of the other windows.
  void Présente(FenêtreHôte* mère);
  /// True once closed: the window is on its way out and no longer serves.
  [[nodiscard]] bool Partie() const { return partie_; }

 protected:
  /// A window that is not shown yet; `refus` is asked by `FaisSiPermis`.
  FenêtreDeFeuille(Suivi suivi, Mots mots, Refus refus = {});

  /// Takes everything from the form anew.
  virtual void Relit() = 0;
  /// Takes what `timer` refreshes. `sûres` is false when the refresh failed: the values are old
  /// then, and must not be shown as present ones.
  virtual void AfficheLesValeurs(bool sûres) = 0;

  /// Carries out what the operator asked, then shows the form's new state. A failure is told under
  /// `échec` and changes nothing else. The window may be gone when this returns.
  void Fais(const std::function<void()>& action, const QString& échec);
  /// The same for what changes a reading or an output: the host may refuse it, which is told under
  /// `échec` too, and leaves the form as it is. Asked at the act: the window may have been opened
  /// long before.
  void FaisSiPermis(const std::function<void()>& action, const QString& échec);
  /// The words of the windows' own.
  [[nodiscard]] const Mots& LesMots() const { return mots_; }

  /// Tells the form, and takes the window out of service.
  void closeEvent(QCloseEvent* événement) override;

 private:
  void Tic();
  void Quitte();

  Suivi suivi_;
  Mots mots_;
  Refus refus_;
  QTimer timer_;
  bool partie_ = false;
};

}  // namespace zuma::qt
