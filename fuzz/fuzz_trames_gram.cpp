// Records of the Gram balance on any bytes: a record has its ten characters and is the last one
// received, what stands behind it is kept, and the buffer does not grow.
#include <cmath>

#include "fuzz/entree.h"
#include "instruments/trames_gram.h"

using namespace zuma;
using namespace zuma::trames_gram;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* données, std::size_t taille) {
  Entrée entrée(données, taille);
  Octets tampon;
  while (!entrée.Reste().empty()) {
    tampon += entrée.Octets(1U + entrée.Octet() % 40U);
    const Octets avant = tampon;
    if (ExtraitEnregistrement(tampon)) {
      Exige(tampon.size() >= kLongueurEnregistrement, "longueur");
      const Octets enregistrement = tampon.substr(0, kLongueurEnregistrement);
      const Octets suite = tampon.substr(kLongueurEnregistrement);
      Exige(avant.ends_with(enregistrement + "\r\n" + suite), "enregistrement");
      Exige(!ExtraitEnregistrement(tampon), "enregistrement répété");
      Exige(std::isfinite(Nombre(tampon).value_or(0)), "nombre");
    } else {
      Exige(avant.ends_with(tampon), "tampon");
    }
    Exige(tampon.size() <= 64, "tampon sans fin");
  }
  (void)ContientUnEnregistrement({reinterpret_cast<const char*>(données), taille});
  return 0;
}
