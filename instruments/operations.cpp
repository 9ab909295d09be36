#include "instruments/operations.h"

#include "instruments/thumler.h"
#include "instruments/variateur_ls.h"
#include "tree/operations_arbre.h"

namespace zuma::instruments {
namespace {

// The object of a board that is one drive: there is no second base address.
template <class Variateur>
Variateur& LeVariateur(Carte& carte) {
  return carte.PiloteDe<Variateur>(0);
}

void RafraîchitVariateur(Carte& carte) {
  LeVariateur<VariateurLS>(carte).CommLSAvecSoftK9(carte);
}

void DémarreThumler(Carte& carte) {
  auto& thumler = LeVariateur<Thumler>(carte);
  carte.Adresse(thumler.OuvreThumler(thumler.Numéro(carte.Adresse())));
}

void RafraîchitThumler(Carte& carte) {
  LeVariateur<Thumler>(carte).CommThumler(carte);
}

}  // namespace

const OpérationsCarte kVariateurLS{.démarre = &opérations_arbre::OuvreLigneSérie,
                                   .rafraîchit = &RafraîchitVariateur};
const OpérationsCarte kThumler{.démarre = &DémarreThumler, .rafraîchit = &RafraîchitThumler};

}  // namespace zuma::instruments
