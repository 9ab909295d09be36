// Answers of the instruments that sensors ask, on any bytes.
#include <cmath>

#include "base/echec.h"
#include "fuzz/entree.h"
#include "sensors/trames_capteur.h"

using namespace zuma;
using namespace zuma::trames_capteur;

namespace {

void ExigeFini(const std::optional<Mesure>& mesure) {
  Exige(!mesure || !mesure->nombre || std::isfinite(*mesure->nombre), "nombre fini");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  const Octets texte(reinterpret_cast<const char*>(données), taille);
  if (const auto trame = TrameSignée(texte)) {
    Exige(trame->size() <= texte.size(), "trame plus longue que le texte");
    ExigeFini(DécodeRéservé1(*trame));
    ExigeFini(DécodeRéservé2(*trame));
  }
  ExigeFini(DécodeRéservé1(texte));
  ExigeFini(DécodeRéservé2(texte));
  try {
    ExigeFini(DécodeScout55(texte));
  } catch (const Echec&) {  // a refusal without its end
  }
  return 0;
}
