#pragma once

#include <vector>

#include "core/chassis.h"
#include "host/desktop/fiche_commande.h"
#include "host/desktop/volet_defilant.h"

namespace zuma::host {

/// The commands of the frame, one card each.
class VoletCommandes : public VoletDéfilant {
 public:
  VoletCommandes(Chassis& chassis, const Textes& textes, const Verrou& verrou, FenêtreHôte& mère);

  void Rafraîchit();

 private:
  std::vector<FicheCommande*> fiches_;
};

}  // namespace zuma::host
