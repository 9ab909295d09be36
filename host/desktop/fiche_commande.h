#pragma once

#include <QFrame>
#include <functional>

#include "commands/commande.h"
#include "host/desktop/textes.h"
#include "platform/fenetres.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zuma::host {

/// True while outputs must not be operated. Asked at each act: what a window shows may be late.
using Verrou = std::function<bool()>;

/// One command: in or out of service, its set point, what stands at its output.
///
/// A typed set point waits, told as such, for Enter or its button; Escape and a stop drop it. What
/// is not being typed is always the machine's.
class FicheCommande : public QFrame {
 public:
  /// Forms are shown as children of `mère`, which outlives the frame.
  FicheCommande(CommandeRef commande, const Textes& textes, Verrou verrou, FenêtreHôte& mère);

  void Rafraîchit();

 protected:
  void contextMenuEvent(QContextMenuEvent* demande) override;

 private:
  void Dispose();
  void Branche();
  void Applique();
  void Abandonne();
  void Signale(bool attente, bool fautive);
  void MontreLaConsigne(bool commandable);
  [[nodiscard]] bool Recopie() const {
    return commande_->TypeCommande() == ENUM_TYPE_COMMANDE::Recopie;
  }
  [[nodiscard]] QString Nombre(double valeur) const;
  [[nodiscard]] QString TexteDeSortie() const;
  [[nodiscard]] QString TexteDesLimites() const;

  CommandeRef commande_;
  const Textes& textes_;
  Verrou verrou_;
  FenêtreHôte& mère_;
  bool attente_ = false;  ///< something typed is not applied
  QCheckBox* service_;
  QLineEdit* consigne_;
  QPushButton* applique_;
  QLabel* sortie_;
  QLabel* saturée_;
  QLabel* limites_;
};

}  // namespace zuma::host
