#include "host/verbes/gestes_capteur.h"

#include <algorithm>
#include <array>

namespace zuma::host {
namespace {

struct Geste {
  char touche;
  bool change;  // what is read
  void (*fait)(Capteur&);
};

constexpr std::array kGestes{
    Geste{'t', true, [](Capteur& c) { c.Tare(); }},
    Geste{'c', true, [](Capteur& c) { c.AnnuleTare(); }},
    Geste{'z', true,
          [](Capteur& c) {
            if (c.RazAutorise_bln()) c.Raz();
          }},
    Geste{'m', false, [](Capteur& c) { c.RazMaxiDétecté(); }},
};

}  // namespace

void FaitLeGeste(char touche, Capteur& capteur, bool arrêt) {
  const auto* const geste = std::ranges::find(kGestes, touche, &Geste::touche);
  if (geste != kGestes.end() && !(geste->change && arrêt)) geste->fait(capteur);
}

}  // namespace zuma::host
