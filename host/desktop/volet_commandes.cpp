#include "host/desktop/volet_commandes.h"

#include <QVBoxLayout>

namespace zuma::host {

VoletCommandes::VoletCommandes(Chassis& chassis, const Textes& textes, const Verrou& verrou,
                               FenêtreHôte& mère) {
  setObjectName("voletCommandes");
  auto* contenu = new QWidget;
  auto* boîte = new QVBoxLayout(contenu);
  boîte->setContentsMargins(0, 0, 0, 0);
  for (const CommandeRef& commande : *chassis.Commandes()) {
    fiches_.push_back(new FicheCommande(commande, textes, verrou, mère));
    boîte->addWidget(fiches_.back());
  }
  boîte->addStretch();
  setWidget(contenu);
}

void VoletCommandes::Rafraîchit() {
  for (FicheCommande* fiche : fiches_) fiche->Rafraîchit();
}

}  // namespace zuma::host
