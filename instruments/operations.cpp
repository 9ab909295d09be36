#include "instruments/operations.h"

#include "instruments/thumler.h"
#include "instruments/variateur_ls.h"
#include "tree/operations_arbre.h"

namespace zuma::instruments {
namespace {

// The object of a board that is one instrument: there is no second base address.
template <class Instrument>
Instrument& De(Carte& carte) {
  return carte.PiloteDe<Instrument>(0);
}

void RafraîchitVariateur(Carte& carte) {
  De<VariateurLS>(carte).CommLSAvecSoftK9(carte);
}

void DémarreThumler(Carte& carte) {
  carte.Adresse(De<Thumler>(carte).OuvreThumler(carte.Adresse()));
}

void RafraîchitThumler(Carte& carte) {
  De<Thumler>(carte).CommThumler(carte);
}

}  // namespace

const OpérationsCarte kVariateurLS{.démarre = &opérations_arbre::OuvreLigneSérie,
                                   .rafraîchit = &RafraîchitVariateur};
const OpérationsCarte kThumler{.démarre = &DémarreThumler, .rafraîchit = &RafraîchitThumler};

}  // namespace zuma::instruments
