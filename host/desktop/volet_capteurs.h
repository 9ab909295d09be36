#pragma once

#include <QTableView>
#include <QWidget>
#include <vector>

#include "host/desktop/fiche_commande.h"
#include "host/desktop/table_capteurs.h"
#include "platform/fenetres.h"

class QAction;
class QMenu;

namespace zuma::host {

/// The table of sensors and what an operator does to the chosen one, by key or by menu. What
/// changes a reading waits while outputs must not be operated: some of them follow a sensor.
class VoletCapteurs : public QWidget {
 public:
  /// Forms are shown as children of `mère`, which outlives the frame.
  VoletCapteurs(Chassis& chassis, const Textes& textes, CourbesChoisies& courbes, Verrou verrou,
                FenêtreHôte& mère);

  void Rafraîchit();
  /// The same actions for a menu of the window, allowed as the chosen sensor allows them.
  void RemplitLeMenu(QMenu& menu);

 protected:
  void changeEvent(QEvent* changement) override;

 private:
  struct Geste;
  void AjusteLesColonnes();

  void AjouteLesGestes();
  void MetLesGestesAJour();
  [[nodiscard]] bool EstPermis(const Geste& geste, const Capteur* capteur) const;
  void Ouvre();
  [[nodiscard]] Capteur* Choisi() const { return table_.CapteurDe(vue_.currentIndex()); }

  const Textes& textes_;
  Verrou verrou_;
  FenêtreHôte& mère_;
  TableCapteurs table_;
  QTableView vue_;
  std::vector<QAction*> gestes_;  ///< in the order of the table of gestures
};

}  // namespace zuma::host
