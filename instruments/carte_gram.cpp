// The board that holds a Gram balance.
#include <array>

#include "instruments/balance_gram.h"
#include "instruments/instrument.h"
#include "instruments/operations.h"
#include "instruments/reglages_gardes.h"

namespace zuma::instruments {
namespace {

constexpr std::array<Voie<BalanceGram_CLASS>, 2> kVoies{{
    {ENUM_TYPE_FONCTION::FctEntréesAnalogiques, 0,
     [](const BalanceGram_CLASS& balance) { return balance.ValeurCourante(); }},
    {ENUM_TYPE_FONCTION::FctEntréesLogiques, 0,
     [](const BalanceGram_CLASS& balance) { return Etat(balance.BalanceConnectee()); }},
}};

// With search: only a search finds settings that are worth writing back.
void Démarre(Carte& carte) {
  BalanceGram_CLASS& balance = Neuf<BalanceGram_CLASS>(carte);
  (void)balance.Initialise(carte.Configuration(), true);
  GardeLesRéglages(carte, balance.Settings());
}

}  // namespace

const OpérationsCarte kBalanceGram{.démarre = &Démarre,
                                   .rafraîchit = &RafraîchitEtPublie<BalanceGram_CLASS, kVoies>};

}  // namespace zuma::instruments
