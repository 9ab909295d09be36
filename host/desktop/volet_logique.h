#pragma once

#include <utility>
#include <vector>

#include "core/chassis.h"
#include "host/desktop/fiche_commande.h"
#include "host/desktop/volet_defilant.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace zuma::host {

/// Logic inputs with their lamps, logic outputs with their toggles, and the watchdog.
class VoletLogique : public VoletDéfilant {
 public:
  VoletLogique(Chassis& chassis, const Textes& textes, Verrou verrou);

  void Rafraîchit();

 private:
  void AjouteLesEntrées(QVBoxLayout& boîte);
  void AjouteLesSorties(QVBoxLayout& boîte);
  void AjouteLeWatchdog(QVBoxLayout& boîte);
  void MontreLeWatchdog(bool libre);

  Chassis& chassis_;
  const Textes& textes_;
  Verrou verrou_;
  std::vector<std::pair<EntréeLogiqueRef, QLabel*>> entrées_;
  std::vector<std::pair<SortieLogiqueRef, QPushButton*>> sorties_;
  QCheckBox* watchdog_ = nullptr;
};

}  // namespace zuma::host
